// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/App.h"

#include "app/AboutWindow.h"
#include "app/Configuration.h"
#include "app/ImageFormats.h"
#include "app/Preferences.h"
#include "app/Window1.h"
#include "net/UpdateSite.h"
#include "net/updateWindow.h"

namespace marrowbeck {

App::App() {
    SetVersion(Configuration::kMajorVersion, Configuration::kMinorVersion, Configuration::kBugVersion);
}

Ref<App> App::Current() {
    return As<App>(Application::Current());
}

void App::Event_Open() {
    Preferences::LoadPreferences();
    Prefscreated = true;
    ImageDict = New<Dictionary>();
    const Array<String> names = Split(ImageFormats::All(), ";");
    for (int i = 0; i <= names.Ubound(); ++i) {
        if (Len(names(i)) >= 1) ImageDict->Value(names(i), true);
        LoopYield();
    }
    // The preference is looked at in any case: that makes it one that the file remembers.
    const bool wanted = Preferences::prefs()->root->GetBoolean("autoupdate", true);
    if (wanted && Configuration::kUpdateCheck && !UpdateSite::Configured().Host.IsEmpty()) {
        const Ref<updateWindow> check = Global<updateWindow>();
        check->automaticCheck = true;
        check->ShowModal();
    }
    Global<Window1>()->Show();
    Shell::Prepare();
}

void App::Event_Close() {
    if (Prefscreated) Preferences::SavePreferences();
}

void App::Event_OpenDocument(const Ref<FolderItem>& item) {
    if (!item->Directory()) {
        TellNotOpened(Window1::kNotAFolder);
        return;
    }
    const Ref<Window1> window = Global<Window1>();
    window->gDropFolderpath = item;
    // While a search runs this starts nothing, and the folder waits for the next one.
    window->StartSearch();
}

bool App::Event_UnhandledException(RuntimeException& error) {
    if (dynamic_cast<NilObjectException*>(&error)) {
        System::DebugLog("Marrowbeck NilObjectException trapped");
        return true;
    }
    if (dynamic_cast<OutOfBoundsException*>(&error)) {
        System::DebugLog("Marrowbeck OutOfBoundsException trapped");
        return true;
    }
    return false;
}

bool App::_HelpAboutMarrowbeck_Action() {
    Global<AboutWindow>()->Show();
    return true;
}

bool App::_OnlineHelp_Action() {
    if (String(Configuration::kManualUrl).IsEmpty()) {
        const Ref<FolderItem> resources = _GetApplicationBundleResources();
        if (resources) resources->Child("help.pdf")->Launch();
    } else {
        ShowURL(Configuration::kManualUrl);
    }
    return true;
}

bool App::_HelpMarrowbeckWebsite_Action() {
    const UpdateSite site = UpdateSite::Configured();
    if (site.Host.IsEmpty()) {
        MsgBox("This copy of Marrowbeck was built without a website.");
    } else {
        ShowURL(site.ProductUrl());
    }
    return true;
}

}  // namespace marrowbeck
