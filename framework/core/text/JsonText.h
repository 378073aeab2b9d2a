// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework {

/// `text` as a string of RFC 8259, in its quotes. Bytes that are no UTF-8 become replacement characters.
String JsonText(const String& text);

}  // namespace framework
