// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// Records as programs read them. Pure functions.
namespace RecordText {

/// One line of comma-separated values by RFC 4180, except that it ends as lines do on this system. Bytes that are no
/// text stay as they are.
String Csv(const Array<String>& values);

/// One object by RFC 8259, on one line without an end. Bytes that are no UTF-8 become replacement characters.
String Json(const Array<String>& names, const Array<String>& values);

}  // namespace RecordText
}  // namespace marrowbeck
