// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "framework/core/threads/Event.h"
#include "framework/ui/control/RectControl.h"
#include "framework/ui/control/SegmentedControlItem.h"

namespace framework {

/// A row of joined segments, each of which can be selected. The Tab key visits the row, the arrow keys its segments,
/// and the space bar presses one.
class SegmentedControl : public RectControl {
  public:
    /// One segment at a time, any number of them, or none: each press is a command of its own.
    enum : int { SelectionSingle = 0, SelectionMultiple = 1, SelectionNone = 2 };

    SegmentedControl();
    ~SegmentedControl() override;

    /// A person pressed a segment, the selected one among them. A change made by the program raises nothing.
    Event<void(SegmentedControl& sender, int itemIndex)> OnAction;

    /// Adds a segment behind the others.
    void Append(const Ref<SegmentedControlItem>& item);
    /// The segment at `index`, from 0; OutOfBoundsException beyond.
    Ref<SegmentedControlItem> Items(int index) const;
    int Count() const { return static_cast<int>(items_.size()); }

    int SelectionType() const { return selectionType_; }
    void SelectionType(int type);
    /// Kept for its owner; there is one look.
    int MacControlStyle() const { return macControlStyle_; }
    void MacControlStyle(int style) { macControlStyle_ = style; }
    /// Makes the control as wide as its segments ask for. In any other width they share it out.
    void SizeToFit();

  private:
    friend class SegmentedControlItem;
    class Segment;
    class Row;

    Row& row() const;
    void press(int index);
    void selectionChanged(SegmentedControlItem& item);
    void update();

    std::vector<Ref<SegmentedControlItem>> items_;
    int selectionType_ = SelectionSingle;
    int macControlStyle_ = 0;
};

}  // namespace framework
