// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/ByteQueue.h"
#include "base/FileIdentity.h"
#include "base/ToolResult.h"

namespace base {

// What a tool that stays open reads and writes. A frame is a length and that many bytes; numbers have 32 bits, the
// most significant byte first. A request is an id and the words behind the tool's name, a NUL after each. An answer is
// the id, the exit status, the lengths of the standard output and of the standard error, these two, and, where the
// output holds as long as a file is as it was, the file's identity as seven numbers of 64 bits, and its path.

/// A question to a tool that stays open.
struct Request {
    /// The caller's own; the answer bears it.
    std::uint32_t id = 0;
    /// None at all: the request of this id is no longer of interest, and not answered if it has not been yet.
    Arguments arguments;
};

/// Bytes of the longest request: more words than any command line has.
inline constexpr std::size_t largestRequest = 1U << 20;

/// The file that an answer is about, and how it was found.
struct AboutFile {
    /// All 0 where it did not let itself be looked at.
    FileIdentity file;
    std::string path;
};

struct Answer {
    std::uint32_t id = 0;
    ToolResult result;
    std::optional<AboutFile> about;
};

std::string framed(std::string_view body);
std::string requestFrame(std::uint32_t id, const Arguments& arguments);
std::string answerFrame(const Answer& answer);

/// The contents of a frame; nothing for one that makes no sense.
std::optional<Request> requestFrom(std::string_view body);
std::optional<Answer> answerFrom(std::string_view body);

/// A number, and how it stands in a frame.
std::string numberBytes(std::uint32_t number);
std::optional<std::uint32_t> takeNumber(std::string_view& bytes);

/// The same for the identity of a file: seven numbers of 64 bits, the half with the higher bits first.
void appendIdentity(std::string& bytes, const FileIdentity& file);
std::optional<FileIdentity> takeIdentity(std::string_view& bytes);

/// Cuts frames out of bytes as they come. The cost is linear in the bytes, however they are parted.
class FrameStream {
  public:
    /// A frame longer than `largest` bytes breaks the stream.
    explicit FrameStream(std::size_t largest) : largest_(largest) {}

    void append(std::string_view bytes);

    /// The body of the next frame, if all of it is there; valid until the next call of either function.
    std::optional<std::string_view> next();

    /// Whether all bytes were given out: no frame has begun.
    bool isEmpty() const { return bytes_.Size() == given_; }

    /// A length was read that no frame may have: what follows cannot be told apart.
    bool isBroken() const { return broken_; }

  private:
    ByteQueue bytes_;
    /// Bytes of the frame that was given out last.
    std::size_t given_ = 0;
    std::size_t largest_;
    bool broken_ = false;
};

}  // namespace base
