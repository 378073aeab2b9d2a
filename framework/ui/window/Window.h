// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "framework/core/objects/Color.h"
#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"
#include "framework/ui/control/RectControl.h"
#include "framework/ui/drawing/Cursors.h"

namespace framework {

class Completion;
class DragItem;
class Toolbar;

namespace native {
class WindowFrame;
}

/// A window. A subclass gives it its values in Layout and its controls in CreateControls, and answers its events, which
/// come on the main thread and let no exception out. A window lives at least until it is closed; the one global
/// instance of a class (Global) lives on after that and can be shown again.
class Window : public Object {
  public:
    Window();
    ~Window() override;

    // What a window class defines.

    /// Sets the values of the window, before there are controls.
    virtual void Layout() {}
    virtual void CreateControls() {}

    /// Once, when the window and its controls have been made, before it is on show.
    virtual void Event_Open() {}
    /// Once for each time that the window is closed, by a person, by the program or at quit, while it is still there.
    virtual void Event_Close() {}
    /// Something was dropped on the window. The action is 0. Comes after the drag itself is over, so that the handler
    /// may take its time.
    virtual void Event_DropObject(const Ref<DragItem>& obj, int action);
    /// Something that may be dropped came over the window. The answer does not matter: what the window accepts at all
    /// may be dropped.
    virtual bool Event_DragEnter(const Ref<DragItem>& obj, int action);
    /// The pointer, or something that is dragged, left the window.
    virtual void Event_MouseExit() {}

    /// A key, as the text that it types, that neither a control nor a button of the window took. True says that it was
    /// handled.
    virtual bool Event_KeyDown(const String& key);

    // Life.

    /// Makes the window whole: Layout, CreateControls, Event_Open, each once. Show does it too.
    void Realize();
    /// Brings the window on show and to the front, also after it was closed.
    void Show();
    /// Shows the window, keeps all other windows from being used, and returns when it was closed. On a background
    /// thread, that thread waits.
    void ShowModal();
    /// Closes the window: Event_Close, then it is off the screen. Does nothing when it is closed.
    void Close();

    // Values.

    String Title() const { return title_; }
    void Title(const String& title);
    /// The place of the window's frame on the screen, in pixels; while the window is maximised or fills the screen, the
    /// place that it goes back to. What is read can be written back later and gives the same place.
    int Left() const;
    void Left(int left);
    int Top() const;
    void Top(int top);
    /// The size of the content, in pixels as of controls' places: what lies below the menu bar and the toolbar. Of a
    /// window that is maximised or fills the screen, the size that it goes back to.
    int Width() const;
    void Width(int width);
    int Height() const;
    void Height(int height);
    int MinWidth() const { return minWidth_; }
    void MinWidth(int width);
    int MinHeight() const { return minHeight_; }
    void MinHeight(int height);
    int MaxWidth() const { return maxWidth_; }
    void MaxWidth(int width);
    int MaxHeight() const { return maxHeight_; }
    void MaxHeight(int height);

    /// The kinds of frames. A document has the desktop's colours. A movable modal has them too, is a dialog to the
    /// desktop, and shows no menu bar. A metal one is dark: toolbar, menu bar and content are cut from one piece of
    /// dark metal, and the texts of its controls are light.
    enum : int { FrameDocument = 0, FrameMovableModal = 1, FrameMetal = 9 };
    int Frame() const { return frameKind_; }
    void Frame(int frame);
    /// The colour behind the controls. Setting it sets HasBackColor; without that, the frame's kind decides.
    Color BackColor() const;
    void BackColor(Color color);
    bool HasBackColor() const { return hasBackColor_; }
    void HasBackColor(bool hasBackColor);

    /// Whether the window is on show. Writing counts once the window is whole.
    bool Visible() const;
    void Visible(bool visible);
    bool FullScreen() const;
    void FullScreen(bool fullScreen);
    bool Maximized() const;
    void Maximized(bool maximized);
    /// Whether the application's menu bar stands at the window's top.
    bool MenuBarVisible() const { return menuBarVisible_; }
    void MenuBarVisible(bool visible);

    bool CloseButton() const { return closeButton_; }
    void CloseButton(bool button);
    bool MaximizeButton() const { return maximizeButton_; }
    void MaximizeButton(bool button);
    bool MinimizeButton() const { return minimizeButton_; }
    void MinimizeButton(bool button);
    /// Whether a person can change the window's size; the program always can.
    bool Resizeable() const { return resizeable_; }
    void Resizeable(bool resizeable);

    /// Kept for their owners: the desktop decides whether contents follow a resize at once and where windows appear.
    bool Composite() const { return composite_; }
    void Composite(bool composite) { composite_ = composite; }
    bool LiveResize() const { return liveResize_; }
    void LiveResize(bool liveResize) { liveResize_ = liveResize; }
    int Placement() const { return placement_; }
    void Placement(int placement) { placement_ = placement; }

    Cursor MouseCursor() const { return mouseCursor_; }
    void MouseCursor(Cursor cursor);

    /// Lets files and folders of the registered type be dropped anywhere on the window. Which of them it has a use for
    /// is for Event_DropObject to say, so that it can tell the person; so one type opens the window for all.
    void AcceptFileDrop(const String& typeName);

    /// Has keys such as "Cmd+O", "F5" or "Escape" do something wherever in the window the focus is. They are written as
    /// those of a menu item.
    void AddShortcut(const String& keys, const std::function<void()>& act);

    // Controls.

    /// Makes a control at its place on the window.
    template <class T>
    Ref<T> Add(const String& name, int left, int top, int width, int height, const Locks& locks = {}) {
        const Ref<T> control = New<T>();
        control->Name(name);
        control->SetLocks(locks);
        control->Place(left, top, width, height);
        Add(control);
        return control;
    }
    /// Puts a control on the window, above those that are there. It keeps its place and its locks count from now on. A
    /// toolbar goes above the content, whatever its place.
    void Add(const Ref<RectControl>& control);
    const std::vector<Ref<RectControl>>& Controls() const { return controls_; }

    /// The toolkit's window. For the framework alone.
    native::WindowFrame* Native() const { return frame_; }

  private:
    void bringBack();
    std::vector<Ref<RectControl>> controlsInTabOrder() const;
    void orderTabs();
    void focusFirst();
    void placeOnScreen();

    native::WindowFrame* frame_;
    std::vector<Ref<RectControl>> controls_;
    Completion* modalEnd_ = nullptr;
    String title_;
    Color backColor_{255, 255, 255};
    Cursor mouseCursor_ = Cursor::StandardPointer;
    int frameKind_ = FrameDocument;
    int minWidth_ = 64;
    int minHeight_ = 64;
    int maxWidth_ = 32000;
    int maxHeight_ = 32000;
    int placement_ = 0;
    bool realized_ = false;
    bool open_ = false;
    bool placed_ = false;
    bool hasBackColor_ = false;
    bool menuBarVisible_ = true;
    bool closeButton_ = true;
    bool maximizeButton_ = true;
    bool minimizeButton_ = true;
    bool resizeable_ = true;
    bool composite_ = false;
    bool liveResize_ = true;
};

namespace internal {

/// Closes every open window, the newest first; each gets its close event once.
void CloseAllWindows();
/// Brings the windows that are on show to the front, for a person who started the program once more.
void BringWindowsToFront();

}  // namespace internal
}  // namespace framework
