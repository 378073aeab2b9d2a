// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework {

/// Sounds the desktop's alert.
void Beep();

}  // namespace framework
