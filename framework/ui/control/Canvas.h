// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/threads/Event.h"
#include "framework/ui/control/RectControl.h"
#include "framework/ui/drawing/Graphics.h"
#include "framework/ui/drawing/Picture.h"

namespace framework {

/// An area that the program paints itself, on top of a picture if it likes.
class Canvas : public RectControl {
  public:
    Canvas();
    ~Canvas() override;

    /// The area wants painting; the Backdrop is there already.
    Event<void(framework::Graphics& g)> OnPaint;
    /// A double click of the left button.
    Event<void(int x, int y)> OnDoubleClick;

    /// The picture painted first, at its natural size in the top left corner; Nil for none.
    Ref<Picture> Backdrop() const { return backdrop_; }
    void Backdrop(Ref<Picture> picture);

    /// For drawing outside OnPaint: nothing drawn so stays, it has the canvas painted anew.
    framework::Graphics Graphics();

    /// Whether the Tab key stops here.
    bool TabStop() const;
    void TabStop(bool stop);
    /// Whether a click gives it the keyboard.
    bool AcceptFocus() const;
    void AcceptFocus(bool accept);
    /// Whether the Tab key stays with it once it has the keyboard.
    bool AcceptTabs() const { return acceptTabs_; }
    void AcceptTabs(bool accept) { acceptTabs_ = accept; }
    /// Kept for its owner: everything is painted off screen first here.
    bool DoubleBuffer() const { return doubleBuffer_; }
    void DoubleBuffer(bool buffer) { doubleBuffer_ = buffer; }
    /// Whether the window's background is painted beneath.
    bool EraseBackground() const { return eraseBackground_; }
    void EraseBackground(bool erase);
    /// Whether a frame shows that it has the keyboard.
    bool UseFocusRing() const { return useFocusRing_; }
    void UseFocusRing(bool use);

  private:
    class Area;

    Ref<Picture> backdrop_;
    bool acceptTabs_ = false;
    bool doubleBuffer_ = false;
    bool eraseBackground_ = true;
    bool useFocusRing_ = false;
};

}  // namespace framework
