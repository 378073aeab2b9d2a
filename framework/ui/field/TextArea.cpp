// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/field/TextArea.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextOption>
#include <memory>

#include "framework/ui/drawing/Native.h"
#include "framework/ui/field/LongText.h"

namespace framework {

class TextArea::Widget : public QPlainTextEdit {
  public:
    explicit Widget(const TextArea& owner) : owner_(owner) {
        setTabChangesFocus(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        document()->setDocumentMargin(5);
        document()->clearUndoRedoStacks();  // the margin is nothing that a person did
    }

    bool UseFocusRing = true;

    void Show(const String& text) {
        long_ = native::LongText(isReadOnly() ? native::ToQt(text) : QString());
        setPlainText(isReadOnly() ? long_.Shown() : native::ToQt(text));
    }

    /// Sets how a selection looks while the focus is elsewhere: a hidden one has the colours of the plain text.
    void DressSelection() {
        const bool hide = owner_.HideSelection();
        QPalette colors = palette();
        colors.setColor(QPalette::Inactive, QPalette::Highlight,
                        colors.color(QPalette::Active, hide ? QPalette::Base : QPalette::Highlight));
        colors.setColor(QPalette::Inactive, QPalette::HighlightedText,
                        colors.color(QPalette::Active, hide ? QPalette::Text : QPalette::HighlightedText));
        setPalette(colors);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool lineEnd = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (lineEnd && (isReadOnly() || !owner_.Multiline())) {
            event->ignore();  // the window's default button takes it
            return;
        }
        QPlainTextEdit::keyPressEvent(event);
        cutToLimit();
    }

    // Files that are dropped belong to the window.
    bool canInsertFromMimeData(const QMimeData* source) const override {
        return !source->hasUrls() && QPlainTextEdit::canInsertFromMimeData(source);
    }

    QMimeData* createMimeDataFromSelection() const override {
        if (!isReadOnly()) return QPlainTextEdit::createMimeDataFromSelection();
        auto copied = std::make_unique<QMimeData>();
        const QTextCursor selection = textCursor();
        copied->setText(long_.Between(selection.selectionStart(), selection.selectionEnd()));
        return copied.release();
    }

    void insertFromMimeData(const QMimeData* source) override {
        QString text = source->text();
        if (!owner_.Multiline()) text = text.section(QLatin1Char('\n'), 0, 0);
        textCursor().insertText(text);
        ensureCursorVisible();
        cutToLimit();
    }

    void paintEvent(QPaintEvent* event) override {
        QPlainTextEdit::paintEvent(event);
        if (!UseFocusRing || !hasFocus()) return;
        QPainter painter(viewport());
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }

    void focusInEvent(QFocusEvent* event) override {
        QPlainTextEdit::focusInEvent(event);
        viewport()->update();
    }

    void focusOutEvent(QFocusEvent* event) override {
        QPlainTextEdit::focusOutEvent(event);
        DressSelection();
        viewport()->update();
    }

  private:
    void cutToLimit() {
        const int limit = owner_.LimitText();
        if (limit <= 0 || document()->characterCount() - 1 <= limit) return;
        QTextCursor tail(document());
        tail.setPosition(limit);
        tail.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        tail.removeSelectedText();
    }

    const TextArea& owner_;
    native::LongText long_;
};

TextArea::TextArea() : TextControl(new Widget(*this)) {}

TextArea::Widget& TextArea::area() const {
    return *static_cast<Widget*>(Native());
}

String TextArea::Text() const {
    // A person's typing is in the widget alone.
    return ReadOnly() ? text_ : native::FromQt(area().toPlainText());
}

void TextArea::Text(const String& text) {
    text_ = text;
    area().Show(text);
}

bool TextArea::ReadOnly() const {
    return area().isReadOnly();
}

void TextArea::ReadOnly(bool readOnly) {
    const String text = Text();
    area().setReadOnly(readOnly);
    Text(text);
    // A person without a mouse reads and selects too.
    if (readOnly) area().setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    area().viewport()->setAcceptDrops(!readOnly);
    area().setAcceptDrops(!readOnly);
}

void TextArea::Multiline(bool multiline) {
    multiline_ = multiline;
    area().setLineWrapMode(multiline ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
}

bool TextArea::Border() const {
    return area().frameShape() != QFrame::NoFrame;
}

void TextArea::Border(bool border) {
    area().setFrameShape(border ? QFrame::StyledPanel : QFrame::NoFrame);
}

bool TextArea::UseFocusRing() const {
    return area().UseFocusRing;
}

void TextArea::UseFocusRing(bool useFocusRing) {
    area().UseFocusRing = useFocusRing;
}

bool TextArea::ScrollbarVertical() const {
    return area().verticalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
}

void TextArea::ScrollbarVertical(bool scrollbar) {
    area().setVerticalScrollBarPolicy(scrollbar ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

bool TextArea::ScrollbarHorizontal() const {
    return area().horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
}

void TextArea::ScrollbarHorizontal(bool scrollbar) {
    area().setHorizontalScrollBarPolicy(scrollbar ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

Color TextArea::TextColor() const {
    return native::FromQt(area().palette().color(QPalette::Text));
}

void TextArea::TextColor(Color color) {
    QPalette palette = area().palette();
    palette.setColor(QPalette::Text, native::ToQt(color));
    area().setPalette(palette);
}

Color TextArea::BackColor() const {
    return native::FromQt(area().palette().color(QPalette::Base));
}

void TextArea::BackColor(Color color) {
    QPalette palette = area().palette();
    palette.setColor(QPalette::Base, native::ToQt(color));
    area().setPalette(palette);
}

void TextArea::HideSelection(bool hide) {
    hideSelection_ = hide;
    area().DressSelection();
}

void TextArea::Alignment(int align) {
    alignment_ = align;
    QTextOption option = area().document()->defaultTextOption();
    option.setAlignment(align == AlignCenter ? Qt::AlignHCenter : align == AlignRight ? Qt::AlignRight : Qt::AlignLeft);
    area().document()->setDefaultTextOption(option);
}

bool TextArea::AcceptTabs() const {
    return !area().tabChangesFocus();
}

void TextArea::AcceptTabs(bool accept) {
    area().setTabChangesFocus(!accept);
}

bool TextArea::CanEdit(Command command) const {
    const bool selection = area().textCursor().hasSelection();
    switch (command) {
        case Command::Undo:
            return !ReadOnly() && area().document()->isUndoAvailable();
        case Command::Cut:
        case Command::Clear:
            return !ReadOnly() && selection;
        case Command::Copy:
            return selection;
        case Command::Paste:
            return area().canPaste();
        case Command::SelectAll:
            return !area().document()->isEmpty();
    }
    return false;
}

void TextArea::Edit(Command command) {
    switch (command) {
        case Command::Undo:
            area().undo();
            break;
        case Command::Cut:
            area().cut();
            break;
        case Command::Copy:
            area().copy();
            break;
        case Command::Paste:
            area().paste();
            break;
        case Command::Clear:
            area().textCursor().removeSelectedText();
            break;
        case Command::SelectAll:
            area().selectAll();
            break;
    }
}

}  // namespace framework
