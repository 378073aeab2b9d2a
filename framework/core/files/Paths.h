// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "framework/core/text/String.h"

/// What can be said of a path from its bytes. None of these raises.
namespace framework::Paths {

/// The path made absolute by the current folder, and no more: no disk is asked. Empty when no file can have the path.
std::string Absolute(std::string_view path);

/// The path made absolute by the current folder, without ".", ".." and needless slashes. What stands before a ".." is
/// looked up on the disk, aside, so that the way up from a linked folder is the real one. Empty when no file can have
/// the path.
std::string Normalise(std::string_view path);

/// The part of an absolute path behind its last slash; "/" for the root.
std::string_view LastPart(std::string_view path);
/// The part before that, "/" for what lies in the root; empty for the root.
std::string_view EnclosingFolder(std::string_view path);
/// The path of what is called `name` in `folder`.
std::string Join(std::string_view folder, std::string_view name);

/// Escaped byte by byte so that a POSIX shell reads it as the word that it was, or, cut at a slash, as a part of one.
std::string EscapeForShell(std::string_view path);

/// The URL of an absolute path by RFC 3986 and RFC 8089: all bytes but letters, digits, "-._~/:" are escaped.
std::string ToUrl(std::string_view path);
/// Whether `text` is meant as a "file:" URL, whether it is a good one or not.
bool IsUrl(std::string_view text);
/// The path of a "file:" URL of this machine by RFC 8089, with one slash before the path or with three, or with this
/// machine's name between them; byte by byte, whether it is valid text or not. Nothing for any other text, and where no
/// file can have the path.
std::optional<std::string> FromUrl(std::string_view url);

/// A name as people may see it: valid UTF-8, with a sign in the place of each control character and stray byte.
String ForDisplay(std::string_view name);

}  // namespace framework::Paths
