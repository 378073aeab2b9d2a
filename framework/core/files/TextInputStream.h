// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "base/Descriptor.h"
#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

/// Reads a file as text, line by line. LF, CR LF and CR all end a line; all other bytes, NUL too, come as they are.
/// A read that fails ends the text.
class TextInputStream : public Object {
  public:
    explicit TextInputStream(base::Descriptor file);
    /// Reads what a command printed, say, as if it were a file.
    explicit TextInputStream(const String& text);

    /// The next line without its end, labelled with `encoding`; empty at the end.
    String ReadLine(TextEncoding encoding = Encodings::UTF8);
    /// All that is left, line ends as they are.
    String ReadAll(TextEncoding encoding = Encodings::UTF8);
    /// Whether nothing is left to read: EOF, under its full name, since the C library takes the short one.
    bool EndOfFile();
    void Close();
    /// Whether reading ended because the system could not go on.
    bool Failed() const { return failed_; }

  private:
    /// Makes sure that `rest_` is not empty unless the file is at its end, and that no LF of a CR LF leads it.
    bool fill();
    bool refill();

    base::Descriptor file_;
    std::string buffer_;
    /// The part of the buffer that is not yet read.
    std::string_view rest_;
    bool skipLineFeed_ = false;
    bool failed_ = false;
};

}  // namespace framework
