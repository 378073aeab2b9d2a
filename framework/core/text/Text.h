// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

#include "framework/core/text/Format.h"
#include "framework/core/text/Numbers.h"
#include "framework/core/text/String.h"
#include "framework/core/text/TextEncoding.h"

/// The functions on texts. Positions and fields count from 1; a position of 0 means not found. Lengths and positions
/// are in characters; the names that end in B count bytes. Every search ignores case, by Unicode's simple case folding,
/// as the equality of texts does. None of these functions fails, whatever the bytes.
namespace framework {

int Len(const String& text);
int LenB(const String& text);

/// The first, or last, `count` characters: all of a shorter text, and none for a count below 1.
String Left(const String& text, int count);
String Right(const String& text, int count);
/// The characters from `start` on. A start below 1 counts as 1, a length below 1 gives the empty text.
String Mid(const String& text, int start);
String Mid(const String& text, int start, int length);

/// The position of `find` at or after `start`; a start below 1 counts as 1. The empty text is found at `start`, if the
/// text has a character there.
int InStr(int start, const String& text, const String& find);
int InStr(const String& text, const String& find);
/// The same by exact bytes, with positions in bytes.
int InStrB(int start, const String& text, const String& find);

/// The text with the first, or each, occurrence of `old` replaced; occurrences do not overlap. With an empty `old` the
/// text stays as it is. The result is in the encoding of `text`.
String Replace(const String& text, const String& old, const String& replacement);
String ReplaceAll(const String& text, const String& old, const String& replacement);

/// The text without the white space (of Unicode) at both ends, at the beginning, at the end. NUL is no white space.
String Trim(const String& text);
String LTrim(const String& text);
String RTrim(const String& text);

/// Small and capital letters by Unicode's simple mappings: the number of characters stays. In bytes of no known
/// encoding only ASCII letters change.
String Lowercase(const String& text);
String Uppercase(const String& text);

/// The character with the Unicode code point `code`, in UTF-8. A code that is no character gives U+FFFD.
String Chr(int code);
/// The code point of the first character; of a byte that belongs to no character the byte; 0 for the empty text.
int Asc(const String& text);

/// The same bytes with the label `encoding`.
String DefineEncoding(const String& text, TextEncoding encoding);
/// The same characters in `encoding`. See String::Converted.
String ConvertEncoding(const String& text, TextEncoding encoding);

}  // namespace framework
