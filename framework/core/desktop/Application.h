// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "framework/core/objects/Exceptions.h"
#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

namespace framework {

class FolderItem;

namespace internal {

/// What the layer of windows does first when the application quits.
void SetQuitPreparation(std::function<void()> closeWindows);
/// Raises the application's Open event through the door.
void RaiseOpen();
/// Whether the application quits: nothing new is opened any more.
bool IsQuitting();
/// Gives the windows and the application their close events as Quit does, for a process that is about to be ended from
/// elsewhere. Serves no events and lets no thread go on.
void CloseForGood();
/// Hands the files and folders at these paths to the application's OpenDocument event, one after the other, on a thread
/// of their own, since their disk may take its time. Until RaiseOpen is over they wait.
void RaiseOpenDocuments(std::vector<std::string> paths);

}  // namespace internal

/// Base of the one application object. Its events are called by the framework, on the main thread.
class Application : public Object {
  public:
    Application();
    ~Application() override;

    /// The one application object, Nil before it was made.
    static Ref<Application> Current();

    /// After start-up, once, before any OpenDocument.
    virtual void Event_Open() {}
    /// At quit, once, after the windows have closed.
    virtual void Event_Close() {}
    /// For each file or folder that the desktop, or a second start of the program, asks this one to open. What is not
    /// there does not come this far: an alert and a line on standard error tell that it is missing.
    virtual void Event_OpenDocument(const Ref<FolderItem>& item);
    /// For an exception that nothing caught. True keeps the process alive; the handler or thread in which it rose is
    /// over in any case.
    virtual bool Event_UnhandledException(RuntimeException& error);

    /// Runs the event loop once, for `milliseconds` or, with -1, for what is waiting. On a background thread it lets
    /// the event loop run once and the thread goes on after that.
    void DoEvents(int milliseconds);

    int MajorVersion() const { return major_; }
    int MinorVersion() const { return minor_; }
    int BugVersion() const { return bug_; }
    /// The three parts as people write them, such as "1.0.2".
    String ShortVersion() const;
    void SetVersion(int major, int minor, int bug);

    /// The menu bar; an Object here, since menus belong to the layer of windows.
    Ref<Object> MenuBar() const { return menuBar_; }
    void MenuBar(Ref<Object> menuBar) { menuBar_ = std::move(menuBar); }

    using MenuHandler = std::function<bool()>;
    /// Binds the handler of the menu item called `name`. The handler's True says that the command was handled.
    void _AddMenuHandler(const String& name, MenuHandler handler);
    bool HasMenuHandler(const String& name) const;
    /// Runs the handler of the menu item `name`; False when there is none or it did not handle the command.
    bool RunMenuHandler(const String& name);

  private:
    friend void Quit(int code);
    friend void internal::RaiseOpen();
    friend bool internal::IsQuitting();
    friend void internal::CloseForGood();
    friend void internal::RaiseOpenDocuments(std::vector<std::string> paths);

    void open();
    void openDocuments(std::vector<std::string> paths);
    void openDocument(const std::string& path);
    bool close();
    void quit(int code);

    bool opened_ = false;
    bool quitting_ = false;
    int status_ = 0;
    std::vector<std::vector<std::string>> waitingDocuments_;
    int major_ = 0;
    int minor_ = 0;
    int bug_ = 0;
    Ref<Object> menuBar_;
    std::map<std::string, MenuHandler> menuHandlers_;
};

/// Ends the application in order: the windows get their close events, then the application its own, threads are ended,
/// and the process leaves with `code`, or with 1 where that is 0 and the application's close event failed. Only the
/// first call counts.
void Quit(int code = 0);

}  // namespace framework
