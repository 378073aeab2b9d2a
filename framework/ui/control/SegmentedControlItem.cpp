// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/SegmentedControlItem.h"

#include "framework/ui/control/SegmentedControl.h"

namespace framework {

void SegmentedControlItem::Selected(bool selected) {
    selected_ = selected;
    if (owner_) owner_->selectionChanged(*this);
}

void SegmentedControlItem::Title(const String& title) {
    title_ = title;
    if (owner_) owner_->update();
}

void SegmentedControlItem::Width(int width) {
    width_ = width;
    if (owner_) owner_->update();
}

}  // namespace framework
