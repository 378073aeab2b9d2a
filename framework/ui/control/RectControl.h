// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

class QWidget;

namespace framework {

/// The edges of a window that a control's own edges follow when the window is resized. With both edges of a direction
/// locked, the control grows with the window.
struct Locks {
    bool Left = true;
    bool Top = true;
    bool Right = false;
    bool Bottom = false;

    constexpr bool operator==(const Locks&) const = default;
};

/// Base of every control that shows itself. Places are in pixels from the top left corner of the window's content, as
/// they are with a desktop font of 10 points; with a larger one they are larger on the screen.
/// Main thread or a background thread at its turn; never from another process thread.
class RectControl : public Object {
  public:
    ~RectControl() override;

    /// The name by which the program and the toolkit's tools know the control.
    String Name() const;
    void Name(const String& name);
    /// The place in a control array; kAlone for a control that belongs to none.
    static constexpr int kAlone = -2147483647 - 1;
    int Index() const { return index_; }
    void Index(int index) { index_ = index; }

    bool Enabled() const;
    void Enabled(bool enabled);
    /// Whether the control itself is to be seen, whether its window is on show or not.
    bool Visible() const;
    void Visible(bool visible);
    /// Paints the control anew, soon.
    void Refresh(bool eraseBackground = true);

    int Left() const;
    void Left(int left);
    int Top() const;
    void Top(int top);
    int Width() const;
    void Width(int width);
    int Height() const;
    void Height(int height);
    /// Sets all four at once.
    void Place(int left, int top, int width, int height);
    /// Moves the edges that are locked as those of a content of this size have moved since the control was placed. Each
    /// place follows from that one alone, so that no number of resizes makes the control drift. For the window.
    void Follow(int contentWidth, int contentHeight);

    /// In a narrow window, a control that follows the right edge gives way no further to the left than this. It gets
    /// narrower instead, down to a least width, and then comes nearer to the edge.
    void LeastLeft(int left, int leastWidth = 0) {
        leastLeft_ = left;
        leastWidth_ = leastWidth;
    }

    void SetLocks(const Locks& locks) { locks_ = locks; }

    /// The text shown when the pointer rests on the control.
    String HelpTag() const;
    void HelpTag(const String& text);

    /// What a screen reader calls the control. Without one, the text on the control, or else its help tag.
    String AccessibleName() const;
    void AccessibleName(const String& name);

    /// Position in the order in which the Tab key visits the controls of the window.
    int TabIndex() const { return tabIndex_; }
    void TabIndex(int tabIndex) { tabIndex_ = tabIndex; }

    /// The toolkit's widget, null once the window destroyed it. For the framework alone.
    QWidget* Native() const;
    /// Those to which Tab comes, in this order; only while the former is not null.
    virtual std::vector<QWidget*> TabStops() const { return {Native()}; }

  protected:
    /// Takes over `widget`, which has no parent yet.
    explicit RectControl(QWidget* widget);

    /// The text on the control, for those who cannot see it.
    virtual String OwnText() const { return {}; }
    /// To be called when OwnText has changed.
    void UpdateAccessibleName();

  private:
    class Handle;
    /// Where the control was placed, and how large the window's content was then, in the toolkit's pixels.
    struct Placement {
        int Left = 0;
        int Top = 0;
        int Width = 0;
        int Height = 0;
        int ContentWidth = 0;
        int ContentHeight = 0;
    };

    std::unique_ptr<Handle> handle_;
    Placement placement_;
    Locks locks_;
    String helpTag_;
    String accessibleName_;
    int leastLeft_ = -32768;
    int leastWidth_ = 0;
    int index_ = kAlone;
    int tabIndex_ = 0;
};

}  // namespace framework
