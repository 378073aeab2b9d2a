// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/ui/control/TextControl.h"

namespace framework {

/// A titled frame around other controls, which stand beside it on the window rather than in it.
class GroupBox : public TextControl {
  public:
    GroupBox();

    String Caption() const { return caption_; }
    void Caption(const String& caption);

  protected:
    String OwnText() const override { return caption_; }

  private:
    String caption_;
};

}  // namespace framework
