#pragma once

#include "framework/framework.h"

namespace marrowbeck {

/// The application: answers the desktop, opens the main window, keeps two kinds of stray exception from ending the
/// process, and serves the Help menu. Main thread.
class App : public Application {
  public:
    App();

    /// The one instance.
    static Ref<App> Current();

    void Event_Open() override;
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
};

}  // namespace marrowbeck
