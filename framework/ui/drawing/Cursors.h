// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework {

/// A shape of the mouse pointer.
enum class Cursor { StandardPointer, HandClosed };

namespace System::Cursors {
inline constexpr Cursor StandardPointer = Cursor::StandardPointer;
/// A hand that holds what is being dragged.
inline constexpr Cursor HandClosed = Cursor::HandClosed;
}  // namespace System::Cursors

}  // namespace framework
