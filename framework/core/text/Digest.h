// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework {

/// The MD5 digest (RFC 1321) of the text's bytes: 16 raw bytes without an encoding.
String MD5(const String& data);

/// The bytes in Base64 (RFC 4648), with padding. With a line length above 0 the text is broken by CR LF after each such
/// number of characters, as in mails; nothing follows the last line.
String EncodeBase64(const String& data, int lineLength = 0);

/// The bytes that Base64 text stands for, without an encoding. Characters outside the alphabet are passed over.
String DecodeBase64(const String& text);

}  // namespace framework
