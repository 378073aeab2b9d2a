// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/Application.h"

#include <QCoreApplication>
#include <QTimer>
#include <cstdio>
#include <utility>

#include "framework/core/desktop/NotOpened.h"
#include "framework/core/files/FolderItem.h"
#include "framework/core/threads/Dispatch.h"
#include "framework/core/threads/OwnThread.h"
#include "framework/core/threads/Scheduler.h"

namespace framework {

using internal::Scheduler;

namespace {

Application* theApplication = nullptr;

std::function<void()>& quitPreparation() {
    static std::function<void()> prepare;
    return prepare;
}

std::string keyOf(const String& menuItemName) {
    std::string key = menuItemName.ToStd();
    for (char& byte : key) byte = static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte);
    return key;
}

}  // namespace

Application::Application() {
    theApplication = this;
}

Application::~Application() {
    if (theApplication == this) theApplication = nullptr;
}

Ref<Application> Application::Current() {
    return Ref<Application>(theApplication);
}

void Application::Event_OpenDocument(const Ref<FolderItem>&) {}

bool Application::Event_UnhandledException(RuntimeException&) {
    return false;
}

void Application::DoEvents(int milliseconds) {
    if (internal::OnThread()) {
        Scheduler::Instance().YieldNow();
    } else if (milliseconds > 0) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, milliseconds);
    } else {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
}

void Application::SetVersion(int major, int minor, int bug) {
    major_ = major;
    minor_ = minor;
    bug_ = bug;
}

String Application::ShortVersion() const {
    return String(std::to_string(major_) + "." + std::to_string(minor_) + "." + std::to_string(bug_));
}

void Application::_AddMenuHandler(const String& name, MenuHandler handler) {
    menuHandlers_[keyOf(name)] = std::move(handler);
}

bool Application::HasMenuHandler(const String& name) const {
    return menuHandlers_.contains(keyOf(name));
}

bool Application::RunMenuHandler(const String& name) {
    const auto found = menuHandlers_.find(keyOf(name));
    if (found == menuHandlers_.end()) return false;
    // A command whose handler failed counts as handled: nobody else is to try it.
    bool handled = true;
    // A handler may bind another one in its own place.
    const MenuHandler handler = found->second;
    Dispatch([&] { handled = handler(); });
    return handled;
}

void Application::open() {
    Dispatch([this] { Event_Open(); });
    opened_ = true;
    for (auto openings = std::exchange(waitingDocuments_, {}); auto& paths : openings) openDocuments(std::move(paths));
}

void Application::openDocuments(std::vector<std::string> paths) {
    if (quitting_) return;
    if (!opened_) {
        waitingDocuments_.push_back(std::move(paths));
        return;
    }
    OnOwnThread([self = Ref<Application>(this), paths = std::move(paths)] {
        for (const std::string& path : paths) self->openDocument(path);
    });
}

void Application::openDocument(const std::string& path) {
    const Ref<FolderItem> item = New<FolderItem>(String(path));
    if (item->Exists()) {
        Dispatch([&] { Event_OpenDocument(item); });
        return;
    }
    const String text = item->AbsolutePath() + " does not exist. It may have been moved, renamed or deleted.";
    // Who typed the name looks there.
    std::fprintf(stderr, "%s\n", text.CString());
    TellNotOpened(text);
}

/// The close events, once; False when they were given before.
bool Application::close() {
    if (std::exchange(quitting_, true)) return false;
    if (quitPreparation()) quitPreparation()();
    bool closed = false;
    Dispatch([&] {
        Event_Close();
        closed = true;
    });
    if (!closed) status_ = 1;
    return true;
}

void Application::quit(int code) {
    if (!quitting_) Scheduler::Instance().KillHandlers();
    if (!close()) return;
    Scheduler::Instance().KillAll();
    QCoreApplication::exit(code != 0 ? code : status_);
}

void Quit(int code) {
    const Ref<Application> application = Application::Current();
    if (!application) {
        QCoreApplication::exit(code);
    } else if (internal::OnThread()) {
        // By the event loop: no handler that yields finds itself without a program.
        QTimer::singleShot(0, qApp, [application, code] { application->quit(code); });
    } else {
        application->quit(code);
    }
}

namespace internal {

void SetQuitPreparation(std::function<void()> closeWindows) {
    quitPreparation() = std::move(closeWindows);
}

void RaiseOpen() {
    Application::Current()->open();
}

bool IsQuitting() {
    return theApplication && theApplication->quitting_;
}

void CloseForGood() {
    const NoYield stay;
    if (const Ref<Application> application = Application::Current()) application->close();
}

void RaiseOpenDocuments(std::vector<std::string> paths) {
    Application::Current()->openDocuments(std::move(paths));
}

}  // namespace internal
}  // namespace framework
