// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/menu/Toolbar.h"

#include <QAction>
#include <QToolBar>
#include <QToolButton>

#include "framework/core/objects/Exceptions.h"
#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

constexpr int kIconSize = 32;

/// Lets the window shine through: the bar is of one piece with it.
class BarWidget : public QToolBar {
  public:
    BarWidget() {
        setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        setIconSize(QSize(native::ToToolkit(kIconSize), native::ToToolkit(kIconSize)));
        setContextMenuPolicy(Qt::PreventContextMenu);
    }

  protected:
    void paintEvent(QPaintEvent*) override {}
};

QToolBar& barOf(const RectControl& control) {
    return *static_cast<QToolBar*>(control.Native());
}

}  // namespace

Toolbar::Toolbar() : RectControl(new BarWidget) {
    UpdateAccessibleName();
}

void Toolbar::Append(const Ref<ToolItem>& item) {
    items_.push_back(item);
    QToolBar& bar = barOf(*this);
    if (item->Style() == ToolItem::StyleFlexibleSpace) {
        auto* const space = new QWidget;
        space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        bar.addWidget(space);
        return;
    }
    QAction& action = item->Native();
    action.setSeparator(item->Style() == ToolItem::StyleSeparator);
    bar.addAction(&action);
    if (action.isSeparator()) return;

    if (auto* const button = qobject_cast<QToolButton*>(bar.widgetForAction(&action))) {
        button->setObjectName(native::ToQt(item->Name()));
        button->setFocusPolicy(Qt::TabFocus);  // within reach without a mouse
    }
    ToolItem* const pressed = item.Get();  // the bar keeps it
    QObject::connect(&action, &QAction::triggered, &bar, [this, pressed] {
        const Ref<Toolbar> alive(this);
        OnAction.Raise(*this, Ref<ToolItem>(pressed));
    });
}

Ref<ToolItem> Toolbar::Item(int index) const {
    if (index < 0 || index >= Count()) throw OutOfBoundsException();
    return items_[static_cast<std::size_t>(index)];
}

}  // namespace framework
