// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Startup.h"

#include <optional>

#include "app/App.h"
#include "app/CommandLine.h"
#include "app/Configuration.h"
#include "app/FileTypes1.h"
#include "app/ImageFormats.h"
#include "app/MenuBar1.h"

namespace marrowbeck {
namespace {

/// The framework keeps no owning reference to the application object; it lives here.
Ref<App> theApp;

}  // namespace

int _Main(int argc, char** argv) {
    if (const std::optional<int> status = AnswerCommandLine(argc, argv)) return *status;
    const int refused = RunFrameworkInitialization(argc, argv, {"Marrowbeck", Configuration::kIdentity}, _Startup);
    if (refused != 0) return refused;
    return RuntimeRun();
}

int _Startup() {
    _InitTools();
    _InitFileTypes();
    _NewAppInstance();
    _ApplicationAddMenuHandlers();
    return 0;
}

void _InitTools() {
    ApplicationPaths::SetName("marrowbeck");
    if (const Ref<FolderItem> tools = ApplicationToolsFolder()) {
        Shell::SetToolsFolder(tools->AbsolutePath(), {"mdls", "sips", "look"});
    }
}

void _InitFileTypes() {
    FileTypes1::_Initialize();
    ImageFormats::_Initialize();
}

void _NewAppInstance() {
    theApp = New<App>();
    theApp->MenuBar(Global<MenuBar1>());
}

void _ApplicationAddMenuHandlers() {
    theApp->_AddMenuHandler("HelpAboutMarrowbeck", [] { return theApp->_HelpAboutMarrowbeck_Action(); });
    theApp->_AddMenuHandler("OnlineHelp", [] { return theApp->_OnlineHelp_Action(); });
    theApp->_AddMenuHandler("HelpMarrowbeckWebsite", [] { return theApp->_HelpMarrowbeckWebsite_Action(); });
}

}  // namespace marrowbeck
