// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/framework.h"

namespace marrowbeck {

/// The application: loads and saves the preferences, looks for a newer version before the main window opens, answers
/// the desktop, keeps two kinds of stray exception from ending the process, and serves the Help menu. Main thread.
class App : public Application {
  public:
    App();

    /// The one instance.
    static Ref<App> Current();

    void Event_Open() override;
    /// Saves the preferences, unless the process ends before they were read.
    void Event_Close() override;
    /// Opens a folder: in the main window, as soon as no search runs. A file gets a message.
    void Event_OpenDocument(const Ref<FolderItem>& item) override;
    bool Event_UnhandledException(RuntimeException& error) override;

    bool _HelpAboutMarrowbeck_Action();
    bool _OnlineHelp_Action();
    bool _HelpMarrowbeckWebsite_Action();

    /// The folder last searched, in the form of FolderItem::GetSaveInfo; empty before the first search.
    String gFolder;
    /// The names of the known image types, as keys. Nil until Event_Open.
    Ref<Dictionary> ImageDict;
    /// Whether the preferences were loaded.
    bool Prefscreated = false;
};

}  // namespace marrowbeck
