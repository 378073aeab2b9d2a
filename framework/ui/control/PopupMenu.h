// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/threads/Event.h"
#include "framework/ui/control/TextControl.h"

namespace framework {

/// A list of texts that opens from a button and of which one can be selected. Rows count from 0; a row that does not
/// exist raises OutOfBoundsException.
class PopupMenu : public TextControl {
  public:
    PopupMenu();

    /// Another row was selected, by a person or by the program.
    Event<void(PopupMenu& sender)> OnChange;

    void AddRow(const String& text);
    void DeleteAllRows();
    String List(int row) const;
    int ListCount() const;
    /// The selected row, -1 for none.
    int ListIndex() const;
    void ListIndex(int row);
    /// The selected row's text, empty when there is none.
    String Text() const;
};

}  // namespace framework
