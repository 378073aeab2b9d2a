// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QPointer>
#include <QSize>
#include <QWidget>

#include "framework/ui/control/AccessibleRole.h"
#include "framework/ui/field/EditTarget.h"
#include "framework/ui/window/FocusKeeper.h"
#include "framework/ui/window/NormalBounds.h"
#include "framework/ui/window/Window.h"

class QMenuBar;

namespace framework {
class PushButton;
}

namespace framework::native {

/// The toolkit's side of a Window: menu bar, toolbar and content one below the other, the content exactly as large as
/// the program wants it, and the way from the toolkit's events to the window's.
class WindowFrame : public QWidget, public AccessibleRole {
  public:
    explicit WindowFrame(Window& window);

    /// The window is gone; events that still come go nowhere.
    void Forget() { window_ = nullptr; }

    QWidget& Content() { return *content_; }
    /// Makes the content this large, within the window's limits.
    void ResizeContent(QSize size);
    /// The place of the frame and the size of the content; where the window fills the screen, those that it goes back
    /// to.
    QRect Bounds() const;
    /// Makes the window fill the screen, or no longer.
    void Fill(Qt::WindowState how, bool fills) { normal_.Fill(how, fills); }
    /// Takes over what the window's values say of limits, decorations, bars and colours.
    void ApplyLimits();
    void ApplyFlags();
    void ApplyColors();
    void ApplyMenuBar();
    void SetToolbar(QWidget* toolbar);

    /// On show and to the front.
    void Present(bool modal);
    void BringToFront();

    /// The focused control as far as the Edit menu can do something with it, null when there is none. While a menu has
    /// the focus, the control that had it before counts.
    EditTarget* FocusedEditTarget() const;

    QAccessible::Role Role() const override;

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    bool isMetal() const;
    int menuBarHeight() const;
    int barsHeight() const;
    void bringOnScreen();
    void arrange();
    void makeMenuBar();
    bool putOffPainting();
    bool push(bool (*isIt)(const PushButton& button));

    Window* window_;
    QWidget* content_;
    QMenuBar* menuBar_ = nullptr;
    QPointer<QWidget> toolbar_;
    QPointer<QWidget> lastFocus_;
    NormalBounds normal_{*this};
    FocusKeeper focus_{*this};
    int arrangedBars_ = 0;
    QElapsedTimer sincePainted_;
    /// Runs while painting is put off.
    QBasicTimer painting_;
};

/// The frame in which `widget` stands, null when it stands in none.
WindowFrame* FrameOf(const QWidget* widget);

}  // namespace framework::native
