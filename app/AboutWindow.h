// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/framework.h"

namespace marrowbeck {

/// The about box: emblem, name, by-line and version. One instance, Global<AboutWindow>(), which Show brings back. It
/// has no button; its close box and Escape close it. Main thread.
class AboutWindow : public Window {
  public:
    void Layout() override;
    void CreateControls() override;
    void Event_Open() override;
    bool Event_KeyDown(const String& key) override;

    Ref<Label> Label1;
    Ref<Label> VersionText;
    Ref<Canvas> Canvas1;
    Ref<Label> Label2;
};

}  // namespace marrowbeck
