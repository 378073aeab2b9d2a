// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace framework::native {

/// Gives the keyboard back to a control of a window that lost it by being disabled, as soon as it is enabled again: so
/// a person who works by keys alone stands where they stood. Who has gone elsewhere meanwhile stays there.
class FocusKeeper : public QObject {
  public:
    explicit FocusKeeper(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void moved(QWidget* from, QWidget* to);
    void enabledChanged(QWidget& widget);

    QWidget& window_;
    /// The widget that has just lost the focus, until the event that took it is over.
    QPointer<QWidget> left_;
    /// The widget that lost it by being disabled, and the one that has it instead.
    QPointer<QWidget> lost_;
    QPointer<QWidget> standIn_;
};

}  // namespace framework::native
