#pragma once

namespace framework {

/// Sounds the desktop's alert.
void Beep();

}  // namespace framework
