// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/field/TextField.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>

#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

class FieldWidget : public QLineEdit {
  protected:
    // Files that are dropped belong to the window.
    void dragEnterEvent(QDragEnterEvent* event) override {
        if (event->mimeData()->hasUrls()) {
            event->ignore();
        } else {
            QLineEdit::dragEnterEvent(event);
        }
    }
};

QLineEdit& fieldOf(const RectControl& control) {
    return *static_cast<QLineEdit*>(control.Native());
}

}  // namespace

TextField::TextField() : TextControl(new FieldWidget) {
    QObject::connect(&fieldOf(*this), &QLineEdit::textChanged, Native(), [this] {
        const Ref<TextField> alive(this);
        OnTextChange.Raise(*this);
    });
}

String TextField::Text() const {
    return native::FromQt(fieldOf(*this).text());
}

void TextField::Text(const String& text) {
    fieldOf(*this).setText(native::ToQt(text));
}

bool TextField::ReadOnly() const {
    return fieldOf(*this).isReadOnly();
}

void TextField::ReadOnly(bool readOnly) {
    fieldOf(*this).setReadOnly(readOnly);
}

bool TextField::CanEdit(Command command) const {
    const QLineEdit& field = fieldOf(*this);
    switch (command) {
        case Command::Undo:
            return field.isUndoAvailable();
        case Command::Cut:
        case Command::Clear:
            return !field.isReadOnly() && field.hasSelectedText();
        case Command::Copy:
            return field.hasSelectedText();
        case Command::Paste:
            return !field.isReadOnly() && !QGuiApplication::clipboard()->text().isEmpty();
        case Command::SelectAll:
            return !field.text().isEmpty();
    }
    return false;
}

void TextField::Edit(Command command) {
    QLineEdit& field = fieldOf(*this);
    switch (command) {
        case Command::Undo:
            field.undo();
            break;
        case Command::Cut:
            field.cut();
            break;
        case Command::Copy:
            field.copy();
            break;
        case Command::Paste:
            field.paste();
            break;
        case Command::Clear:
            field.del();
            break;
        case Command::SelectAll:
            field.selectAll();
            break;
    }
}

}  // namespace framework
