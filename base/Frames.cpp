// SPDX-License-Identifier: GPL-2.0-or-later
#include "base/Frames.h"

#include <utility>

namespace base {

namespace {

constexpr std::size_t numberSize = 4;

}  // namespace

std::string numberBytes(std::uint32_t number) {
    std::string bytes(numberSize, '\0');
    for (std::size_t i = numberSize; i-- > 0; number >>= 8) bytes[i] = static_cast<char>(number & 0xff);
    return bytes;
}

std::optional<std::uint32_t> takeNumber(std::string_view& bytes) {
    if (bytes.size() < numberSize) return std::nullopt;
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(0, numberSize)) number = number << 8 | static_cast<unsigned char>(byte);
    bytes.remove_prefix(numberSize);
    return number;
}

void appendIdentity(std::string& bytes, const FileIdentity& file) {
    for (const std::uint64_t number : file.numbers) {
        bytes += numberBytes(static_cast<std::uint32_t>(number >> 32));
        bytes += numberBytes(static_cast<std::uint32_t>(number));
    }
}

std::optional<FileIdentity> takeIdentity(std::string_view& bytes) {
    FileIdentity file;
    for (std::uint64_t& number : file.numbers) {
        const auto high = takeNumber(bytes);
        const auto low = takeNumber(bytes);
        if (!low) return std::nullopt;
        number = std::uint64_t{*high} << 32 | *low;
    }
    return file;
}

std::string framed(std::string_view body) {
    std::string frame = numberBytes(static_cast<std::uint32_t>(body.size()));
    return frame.append(body);
}

std::string requestFrame(std::uint32_t id, const Arguments& arguments) {
    std::string body = numberBytes(id);
    for (const std::string& word : arguments) body.append(word).push_back('\0');
    return framed(body);
}

std::string answerFrame(const Answer& answer) {
    const ToolResult& result = answer.result;
    std::string body = numberBytes(answer.id) + numberBytes(static_cast<std::uint32_t>(result.status)) +
                       numberBytes(static_cast<std::uint32_t>(result.output.size())) +
                       numberBytes(static_cast<std::uint32_t>(result.error.size()));
    body.append(result.output).append(result.error);
    if (answer.about) {
        appendIdentity(body, answer.about->file);
        body += answer.about->path;
    }
    return framed(body);
}

std::optional<Request> requestFrom(std::string_view body) {
    const auto id = takeNumber(body);
    if (!id || (!body.empty() && body.back() != '\0')) return std::nullopt;
    Request request{*id, {}};
    while (!body.empty()) {
        const std::size_t end = body.find('\0');
        request.arguments.emplace_back(body.substr(0, end));
        body.remove_prefix(end + 1);
    }
    return request;
}

std::optional<Answer> answerFrom(std::string_view body) {
    const auto id = takeNumber(body);
    const auto status = takeNumber(body);
    const auto output = takeNumber(body);
    const auto error = takeNumber(body);
    if (!error || *output > body.size() || *error > body.size() - *output) return std::nullopt;
    Answer answer;
    answer.id = *id;
    answer.result.status = static_cast<int>(*status);
    answer.result.output = body.substr(0, *output);
    answer.result.error = body.substr(*output, *error);
    body.remove_prefix(std::size_t{*output} + *error);
    if (body.empty()) return answer;
    const auto file = takeIdentity(body);
    if (!file) return std::nullopt;
    answer.about = AboutFile{*file, std::string(body)};
    return answer;
}

void FrameStream::append(std::string_view bytes) {
    bytes_.Drop(std::exchange(given_, 0));
    bytes_.Append(bytes);
}

std::optional<std::string_view> FrameStream::next() {
    bytes_.Drop(std::exchange(given_, 0));
    std::string_view rest = bytes_.Bytes();
    const auto length = takeNumber(rest);
    if (!length || broken_) return std::nullopt;
    broken_ = *length > largest_;
    if (broken_ || *length > rest.size()) return std::nullopt;
    given_ = numberSize + *length;
    return rest.substr(0, *length);
}

}  // namespace base
