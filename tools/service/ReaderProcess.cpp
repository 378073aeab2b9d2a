// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/ReaderProcess.h"

#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <deque>
#include <exception>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Frames.h"
#include "base/WriteAll.h"
#include "tools/service/Confinement.h"
#include "tools/service/Descriptors.h"

namespace marrowbeck::tools {

namespace {

/// Longer than a file's name and a few numbers.
constexpr std::size_t largestQuestion = 4096;

/// A file's bytes in memory. One that is cut short meanwhile ends the process at the first look behind its end.
class MappedFile {
  public:
    MappedFile(int descriptor, std::uint64_t size) : size_(static_cast<std::size_t>(size)) {
        if (size_ != size) size_ = 0;  // more than there are addresses
        if (size_ > 0) start_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (start_ == MAP_FAILED) size_ = 0;
    }
    ~MappedFile() {
        if (size_ > 0) munmap(start_, size_);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    Content content() const { return {static_cast<const std::uint8_t*>(start_), size_}; }

  private:
    void* start_ = nullptr;
    std::size_t size_;
};

/// The questions as they come, each with the descriptor of its content.
class Questions {
  public:
    explicit Questions(int socket) : socket_(socket), stream_(largestQuestion) {}

    /// The next question; nothing at the end of the conversation. Valid until the next call.
    std::optional<std::string_view> next() {
        while (true) {
            if (const auto body = stream_.next()) return body;
            std::array<char, largestQuestion> buffer;
            const ssize_t count = stream_.isBroken() ? 0 : receiveWith(socket_, buffer, arrived_);
            if (count <= 0) return std::nullopt;
            for (base::Descriptor& file : arrived_) files_.push_back(std::move(file));
            arrived_.clear();
            stream_.append({buffer.data(), static_cast<std::size_t>(count)});
        }
    }

    /// The first file that no question had.
    base::Descriptor takeFile() {
        if (files_.empty()) return {};
        base::Descriptor file = std::move(files_.front());
        files_.pop_front();
        return file;
    }

  private:
    int socket_;
    base::FrameStream stream_;
    std::vector<base::Descriptor> arrived_;
    std::deque<base::Descriptor> files_;
};

std::optional<std::string> answerTo(Tool& tool, std::string_view question, Questions& questions) {
    const bool hasContent = base::takeNumber(question).value_or(0) != 0;
    const std::uint64_t high = base::takeNumber(question).value_or(0);
    const std::uint64_t size = high << 32 | base::takeNumber(question).value_or(0);
    base::Descriptor file = hasContent ? questions.takeFile() : base::Descriptor();
    const MappedFile mapped(file.Number(), file.IsOpen() ? size : 0);
    file.Close();
    try {
        return tool.read(std::string(question), mapped.content());
    } catch (const std::exception&) {  // above all: no more memory
        return std::nullopt;
    }
}

/// Hands over what the supervisor is asked by. From here on nobody else has it.
bool greet(const std::optional<base::Descriptor>& asked, int socket) {
    if (!asked) return false;
    const std::array<int, 1> number{asked->Number()};
    return sendWith(socket, "\n", std::span(number).first(asked->IsOpen() ? 1 : 0)) == 1;
}

}  // namespace

void serveQuestions(Tool& tool, const std::vector<std::string>& folders, int socket) {
    if (!greet(confine(tool.limits().memoryBytes, folders), socket)) return;
    Questions questions(socket);
    while (auto question = questions.next()) {
        const auto id = base::takeNumber(*question);
        if (!id) return;
        const std::optional<std::string> answer = answerTo(tool, *question, questions);
        // Answers may be large: each is copied once.
        const std::string_view words = answer ? std::string_view(*answer) : std::string_view();
        std::string head = base::numberBytes(*id);
        head += answer ? '\1' : '\0';
        std::string frame = base::numberBytes(static_cast<std::uint32_t>(head.size() + words.size())) + head;
        if (!base::writeAll(socket, frame.append(words))) return;
    }
}

}  // namespace marrowbeck::tools
