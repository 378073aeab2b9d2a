// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

class SegmentedControl;

/// One segment of a SegmentedControl.
class SegmentedControlItem : public Object {
  public:
    explicit SegmentedControlItem(const String& title = {}, int width = 0) : title_(title), width_(width) {}

    /// Where one segment at a time can be selected, selecting one clears the others.
    bool Selected() const { return selected_; }
    void Selected(bool selected);
    String Title() const { return title_; }
    void Title(const String& title);
    /// In pixels; the segment is as wide as its title needs if that is more.
    int Width() const { return width_; }
    void Width(int width);

  private:
    friend class SegmentedControl;

    SegmentedControl* owner_ = nullptr;
    String title_;
    int width_;
    bool selected_ = false;
};

}  // namespace framework
