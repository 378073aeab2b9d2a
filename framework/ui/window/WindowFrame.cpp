// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/WindowFrame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QTimerEvent>
#include <QWindow>
#include <algorithm>
#include <string_view>

#include "framework/core/desktop/Application.h"
#include "framework/core/threads/Dispatch.h"
#include "framework/core/threads/OwnThread.h"
#include "framework/ui/control/PushButton.h"
#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/drawing/WindowPalette.h"
#include "framework/ui/menu/MenuBar.h"
#include "framework/ui/window/DragItem.h"

namespace framework::native {
namespace {

const QString kUriList = QStringLiteral("text/uri-list");

/// How much lighter than the content the metal is at the very top of the window, in percent as Qt counts.
constexpr int kMetalShine = 145;
/// How long a painted window rests, in milliseconds: the time of a screen's frame. Painted at each turn of the event
/// loop, a running count alone would take more time than what is counted.
constexpr int kFrame = 16;

Ref<DragItem> itemOf(const QMimeData& data) {
    const QByteArray list = data.data(kUriList);
    return New<DragItem>(std::string_view(list.constData(), static_cast<std::size_t>(list.size())));
}

}  // namespace

WindowFrame::WindowFrame(Window& window) : window_(&window), content_(new QWidget(this)) {
    AnnounceRoles();
    content_->resize(ToToolkit(600), ToToolkit(400));
    QObject::connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && content_->isAncestorOf(now)) lastFocus_ = now;
    });
}

bool WindowFrame::isMetal() const {
    return window_ && window_->Frame() == Window::FrameMetal && !window_->HasBackColor();
}

int WindowFrame::menuBarHeight() const {
    if (!menuBar_ || menuBar_->isHidden() || menuBar_->isNativeMenuBar()) return 0;
    menuBar_->ensurePolished();
    return menuBar_->sizeHint().height();
}

int WindowFrame::barsHeight() const {
    if (!toolbar_ || toolbar_->isHidden()) return menuBarHeight();
    toolbar_->ensurePolished();
    return menuBarHeight() + toolbar_->sizeHint().height();
}

void WindowFrame::arrange() {
    const int menu = menuBarHeight();
    arrangedBars_ = barsHeight();
    if (menuBar_) menuBar_->setGeometry(0, 0, width(), menu);
    if (toolbar_) toolbar_->setGeometry(0, menu, width(), arrangedBars_ - menu);
    content_->setGeometry(0, arrangedBars_, width(), std::max(0, height() - arrangedBars_));
    if (!window_) return;
    for (const Ref<RectControl>& control : window_->Controls()) {
        if (control->Native()->parentWidget() == content_) control->Follow(content_->width(), content_->height());
    }
}

void WindowFrame::ResizeContent(QSize size) {
    const QSize least(ToToolkit(window_->MinWidth()), ToToolkit(window_->MinHeight()));
    const QSize most(ToToolkit(window_->MaxWidth()), ToToolkit(window_->MaxHeight()));
    const QSize bars(0, barsHeight());
    size = size.boundedTo(most).expandedTo(least);
    const bool free = window_->Resizeable();
    setMinimumSize((free ? least : size) + bars);
    setMaximumSize((free ? most : size) + bars);
    resize(size + bars);
    arrange();  // a window that is not on show hears of no resize
}

QRect WindowFrame::Bounds() const {
    return normal_.Get().adjusted(0, 0, 0, -barsHeight());
}

void WindowFrame::ApplyLimits() {
    ResizeContent(content_->size());
}

void WindowFrame::ApplyFlags() {
    Qt::WindowFlags flags = window_->Frame() == Window::FrameMovableModal ? Qt::Dialog : Qt::Window;
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if (window_->CloseButton()) flags |= Qt::WindowCloseButtonHint;
    if (window_->MaximizeButton()) flags |= Qt::WindowMaximizeButtonHint;
    if (window_->MinimizeButton()) flags |= Qt::WindowMinimizeButtonHint;
    if (flags == windowFlags()) return;
    const bool shown = isVisible();
    setWindowFlags(flags);
    if (shown) show();
}

void WindowFrame::ApplyColors() {
    const bool own = window_->HasBackColor() || window_->Frame() == Window::FrameMetal;
    setPalette(own ? PaletteOn(window_->BackColor()) : QPalette());
    if (menuBar_) {
        QPalette colors = palette();
        if (isMetal()) colors.setColor(QPalette::Window, colors.color(QPalette::Window).lighter(kMetalShine));
        menuBar_->setPalette(own ? colors : QPalette());
    }
    update();
}

void WindowFrame::ApplyMenuBar() {
    const Ref<Application> application = Application::Current();
    const Ref<MenuBar> menus = application ? As<MenuBar>(application->MenuBar()) : Ref<MenuBar>();
    const bool wanted = menus && window_->MenuBarVisible() && window_->Frame() != Window::FrameMovableModal;
    if (wanted) {
        if (!menuBar_) makeMenuBar();
        menus->ShowIn(*menuBar_);
        ApplyColors();
    }
    if (menuBar_) menuBar_->setHidden(!wanted);
    ApplyLimits();
}

void WindowFrame::makeMenuBar() {
    menuBar_ = new QMenuBar(this);
    // The key that opens the menus on most desktops, which the toolkit leaves out.
    auto* const open = new QShortcut(Qt::Key_F10, this);
    QObject::connect(open, &QShortcut::activated, menuBar_, [this] {
        if (menuBar_->actions().isEmpty()) return;
        menuBar_->setFocus(Qt::MenuBarFocusReason);
        menuBar_->setActiveAction(menuBar_->actions().first());
    });
}

void WindowFrame::SetToolbar(QWidget* toolbar) {
    toolbar_ = toolbar;
    toolbar_->setParent(this);
    toolbar_->show();
    ApplyLimits();
}

void WindowFrame::Present(bool modal) {
    ApplyMenuBar();
    if (modal) {
        QWidget* const front = QApplication::activeWindow();
        hide();
        setWindowModality(Qt::ApplicationModal);
        winId();
        if (front && front != this) windowHandle()->setTransientParent(front->windowHandle());
    }
    if (!isVisible()) bringOnScreen();
    show();
    BringToFront();
}

/// A place that was remembered may be on a screen that is no longer there: nobody could take hold of the window.
void WindowFrame::bringOnScreen() {
    constexpr QSize kHandle{100, 20};
    const QRect top(Bounds().topLeft(), QSize(Bounds().width(), kHandle.height()));
    const auto shows = [&](const QScreen* screen) {
        const QRect seen = screen->availableGeometry() & top;
        return seen.width() >= kHandle.width() && seen.height() >= kHandle.height();
    };
    const QList<QScreen*> screens = QGuiApplication::screens();
    if (screens.isEmpty() || std::any_of(screens.begin(), screens.end(), shows)) return;
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    const auto within = [](int place, int size, int start, int extent) {
        return std::clamp(place, start, std::max(start, start + extent - size));
    };
    move(within(top.x(), width(), room.x(), room.width()), within(top.y(), height(), room.y(), room.height()));
}

void WindowFrame::BringToFront() {
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

EditTarget* WindowFrame::FocusedEditTarget() const {
    const QWidget* focus = focusWidget();
    if (!focus || !content_->isAncestorOf(focus)) focus = lastFocus_;
    if (!window_ || !focus) return nullptr;
    for (const Ref<RectControl>& control : window_->Controls()) {
        const QWidget* widget = control->Native();
        if (widget == focus || widget->isAncestorOf(focus)) return dynamic_cast<EditTarget*>(control.Get());
    }
    return nullptr;
}

QAccessible::Role WindowFrame::Role() const {
    return windowType() == Qt::Dialog ? QAccessible::Dialog : QAccessible::Window;
}

bool WindowFrame::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest && window_ && barsHeight() != arrangedBars_) {
        // A bar needs another height; the content keeps its own, unless the window fills the screen.
        if (windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) {
            arrange();
        } else {
            ApplyLimits();
        }
    }
    if (event->type() != QEvent::UpdateRequest) return QWidget::event(event);
    if (!putOffPainting()) {
        QWidget::event(event);
        sincePainted_.start();
    }
    return true;
}

/// Whether it is too early to paint again. The toolkit asks only once for all that is to be painted.
bool WindowFrame::putOffPainting() {
    if (!sincePainted_.isValid() || sincePainted_.hasExpired(kFrame - 1)) return false;
    if (!painting_.isActive())
        painting_.start(kFrame - static_cast<int>(sincePainted_.elapsed()), Qt::PreciseTimer, this);
    return true;
}

void WindowFrame::timerEvent(QTimerEvent* event) {
    if (event->timerId() != painting_.timerId()) return;
    painting_.stop();
    sincePainted_.invalidate();
    QEvent request(QEvent::UpdateRequest);
    QApplication::sendEvent(this, &request);
}

void WindowFrame::resizeEvent(QResizeEvent*) {
    arrange();
}

void WindowFrame::paintEvent(QPaintEvent*) {
    if (!isMetal() || arrangedBars_ == 0) return;
    QPainter painter(this);
    const QColor metal = palette().color(QPalette::Window);
    const int menu = menuBarHeight();
    QLinearGradient shine(0, menu, 0, arrangedBars_);
    shine.setColorAt(0, metal.lighter(kMetalShine));
    shine.setColorAt(1, metal.lighter(112));
    painter.fillRect(0, menu, width(), arrangedBars_ - menu, shine);
    painter.fillRect(0, arrangedBars_ - 1, width(), 1, metal.darker(160));
}

void WindowFrame::closeEvent(QCloseEvent* event) {
    event->accept();
    const Ref<Window> alive(window_);
    if (alive) alive->Close();
}

bool WindowFrame::push(bool (*isIt)(const PushButton& button)) {
    if (!window_) return false;
    for (const Ref<RectControl>& control : window_->Controls()) {
        const Ref<PushButton> button = As<PushButton>(control);
        if (!button || !isIt(*button) || !button->Visible()) continue;
        button->Push();
        return true;
    }
    return false;
}

void WindowFrame::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
    const bool accept = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool cancel = event->key() == Qt::Key_Escape;
    const bool pushed = plain && ((accept && push([](const PushButton& button) { return button.Default(); })) ||
                                  (cancel && push([](const PushButton& button) { return button.Cancel(); })));
    if (pushed) return;
    bool handled = false;
    const Ref<Window> window(window_);
    if (window && plain) Dispatch([&] { handled = window->Event_KeyDown(FromQt(event->text())); });
    if (!handled) QWidget::keyPressEvent(event);
}

void WindowFrame::leaveEvent(QEvent*) {
    const Ref<Window> window(window_);
    if (window) Dispatch([&] { window->Event_MouseExit(); });
}

void WindowFrame::dragEnterEvent(QDragEnterEvent* event) {
    const Ref<Window> window(window_);
    const Ref<DragItem> item = itemOf(*event->mimeData());
    if (!window || !item->FolderItemAvailable()) {
        event->ignore();
        return;
    }
    // Never a move: the files stay where they are.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Dispatch([&] { window->Event_DragEnter(item, 0); });
}

void WindowFrame::dragLeaveEvent(QDragLeaveEvent*) {
    const Ref<Window> window(window_);
    if (window) Dispatch([&] { window->Event_MouseExit(); });
}

void WindowFrame::dropEvent(QDropEvent* event) {
    const Ref<Window> window(window_);
    const Ref<DragItem> item = itemOf(*event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The program from which the item comes waits for the end of the drop; the handler may wait for the item's disk.
    QTimer::singleShot(0, this, [window, item] {
        if (window) OnOwnThread([window, item] { window->Event_DropObject(item, 0); });
    });
}

WindowFrame* FrameOf(const QWidget* widget) {
    return widget ? dynamic_cast<WindowFrame*>(widget->window()) : nullptr;
}

}  // namespace framework::native

namespace framework {

EditTarget* EditTarget::Focused() {
    const native::WindowFrame* const frame = native::FrameOf(QApplication::activeWindow());
    return frame ? frame->FocusedEditTarget() : nullptr;
}

}  // namespace framework
