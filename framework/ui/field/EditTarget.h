// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework {

/// What the Edit menu can ask of a control. A control that understands any of it derives from this beside its other
/// base; the menu asks the one that has the keyboard focus.
class EditTarget {
  public:
    enum class Command { Undo, Cut, Copy, Paste, Clear, SelectAll };

    /// The one that has the keyboard focus in the window in front, null for none. The windows know it.
    static EditTarget* Focused();

    virtual ~EditTarget() = default;

    /// Whether the command would do anything now.
    virtual bool CanEdit(Command command) const = 0;
    virtual void Edit(Command command) = 0;
};

}  // namespace framework
