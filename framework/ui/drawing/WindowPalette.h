// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QPalette>

#include "framework/core/objects/Color.h"

namespace framework::native {

/// The colours of a window and the controls on it that go with the background `background`: a dark one gets light
/// texts, and buttons and lists that are a little lighter or darker than itself.
QPalette PaletteOn(Color background);

}  // namespace framework::native
