// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/PopupMenu.h"

#include <QComboBox>
#include <QSignalBlocker>

#include "framework/core/objects/Exceptions.h"
#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

QComboBox& boxOf(const RectControl& control) {
    return *static_cast<QComboBox*>(control.Native());
}

}  // namespace

PopupMenu::PopupMenu() : TextControl(new QComboBox) {
    QObject::connect(&boxOf(*this), &QComboBox::currentIndexChanged, Native(), [this] {
        const Ref<PopupMenu> alive(this);
        OnChange.Raise(*this);
    });
}

void PopupMenu::AddRow(const String& text) {
    // The box would select its first row by itself.
    const QSignalBlocker quiet(boxOf(*this));
    const int selected = ListIndex();
    boxOf(*this).addItem(native::ToQt(text));
    boxOf(*this).setCurrentIndex(selected);
}

void PopupMenu::DeleteAllRows() {
    boxOf(*this).clear();
}

String PopupMenu::List(int row) const {
    if (row < 0 || row >= ListCount()) throw OutOfBoundsException();
    return native::FromQt(boxOf(*this).itemText(row));
}

int PopupMenu::ListCount() const {
    return boxOf(*this).count();
}

int PopupMenu::ListIndex() const {
    return boxOf(*this).currentIndex();
}

void PopupMenu::ListIndex(int row) {
    if (row < -1 || row >= ListCount()) throw OutOfBoundsException();
    boxOf(*this).setCurrentIndex(row);
}

String PopupMenu::Text() const {
    return native::FromQt(boxOf(*this).currentText());
}

}  // namespace framework
