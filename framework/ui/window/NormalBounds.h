// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QRect>

class QWidget;

namespace framework::native {

/// Remembers where a window is while it does not fill the screen, which is where it goes back to. The toolkit's own
/// memory of that holds the bounds of the filled screen where a window manager tells the new size before the new state.
class NormalBounds : public QObject {
  public:
    explicit NormalBounds(QWidget& window);

    /// The place of the window's frame and the size within it, now or when the window last was normal.
    QRect Get() const;
    /// Makes the window fill the screen, or no longer.
    void Fill(Qt::WindowState how, bool fills);

    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    bool isFilling() const;
    void note();

    QWidget& window_;
    QRect bounds_;
    QBasicTimer settling_;
};

}  // namespace framework::native
