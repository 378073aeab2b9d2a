// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

/// What was last copied, in this program or another.
class Clipboard : public Object {
  public:
    /// The text on the clipboard, empty when something else is there.
    String Text() const;
    void Text(const String& text);
};

}  // namespace framework
