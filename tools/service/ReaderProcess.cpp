// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/ReaderProcess.h"

#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "base/Frames.h"
#include "base/WriteAll.h"
#include "tools/service/Confinement.h"

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

/// The descriptor that came with a message; -1 for none.
int descriptorOf(msghdr& message) {
    const cmsghdr* const header = CMSG_FIRSTHDR(&message);
    if (header == nullptr || header->cmsg_type != SCM_RIGHTS) return -1;
    int descriptor = -1;
    std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
    return descriptor;
}

/// Reads until a whole question is there. False at the end of the conversation.
bool receive(int socket, base::FrameStream& stream, std::string& question, int& file) {
    file = -1;
    while (true) {
        if (const auto body = stream.next()) {
            question = *body;
            return true;
        }
        std::array<char, largestQuestion> buffer;
        iovec part{buffer.data(), buffer.size()};
        alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        const ssize_t count = recvmsg(socket, &message, 0);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0 || stream.isBroken()) return false;
        if (const int descriptor = descriptorOf(message); descriptor >= 0) file = descriptor;
        stream.append({buffer.data(), static_cast<std::size_t>(count)});
    }
}

std::optional<std::string> answerTo(Tool& tool, std::string_view question, int file) {
    const std::uint64_t high = base::takeNumber(question).value_or(0);
    const std::uint64_t size = high << 32 | base::takeNumber(question).value_or(0);
    const MappedFile mapped(file, file < 0 ? 0 : size);
    if (file >= 0) ::close(file);
    try {
        return tool.read(std::string(question), mapped.content());
    } catch (const std::exception&) {  // above all: no more memory
        return std::nullopt;
    }
}

}  // namespace

void serveQuestions(Tool& tool, int socket) {
    if (!confine(tool.limits().memoryBytes, tool.dataFolders())) return;
    base::FrameStream stream(largestQuestion);
    std::string question;
    int file = -1;
    while (receive(socket, stream, question, file)) {
        const std::optional<std::string> answer = answerTo(tool, question, file);
        const std::string body = answer ? '\1' + *answer : std::string(1, '\0');
        if (!base::writeAll(socket, base::framed(body))) return;
    }
}

}  // namespace marrowbeck::tools
