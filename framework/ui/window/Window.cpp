// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/Window.h"

#include <QApplication>
#include <QScreen>
#include <QShortcut>
#include <algorithm>
#include <utility>

#include "framework/core/desktop/Application.h"
#include "framework/core/threads/Dispatch.h"
#include "framework/core/threads/Waiting.h"
#include "framework/ui/drawing/CutText.h"
#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/menu/KeySequence.h"
#include "framework/ui/menu/Toolbar.h"
#include "framework/ui/window/DisplayLoss.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework {
namespace {

constexpr Color kMetal{0x23, 0x27, 0x2e};

/// The windows that are open. They live at least as long as they are here.
std::vector<Ref<Window>>& openWindows() {
    static std::vector<Ref<Window>> windows;
    return windows;
}

}  // namespace

Window::Window() : frame_(new native::WindowFrame(*this)) {
    frame_->ApplyFlags();
}

Window::~Window() {
    frame_->Forget();
    frame_->hide();
    for (const Ref<RectControl>& control : controls_) {
        // Whoever still holds a control may go on asking it.
        control->Native()->hide();
        control->Native()->setParent(nullptr);
    }
    frame_->deleteLater();
}

void Window::Event_DropObject(const Ref<DragItem>&, int) {}

bool Window::Event_DragEnter(const Ref<DragItem>&, int) {
    return false;
}

bool Window::Event_KeyDown(const String&) {
    return false;
}

void Window::Realize() {
    if (internal::IsQuitting() || std::exchange(realized_, true)) return;
    const Ref<Window> alive(this);
    Layout();
    CreateControls();
    orderTabs();
    RunOnMainStack([this] { frame_->ApplyMenuBar(); });
    if (!placed_) placeOnScreen();
    bringBack();
    Dispatch([this] { Event_Open(); });
    if (!frame_->focusWidget()) focusFirst();
}

/// Makes the window an open one, if it is not.
void Window::bringBack() {
    if (std::exchange(open_, true)) return;
    openWindows().emplace_back(this);
}

void Window::Show() {
    const bool isNew = !realized_;
    Realize();
    if ((isNew && !open_) || internal::IsQuitting()) return;  // its open event closed it
    bringBack();
    RunOnMainStack([this] { frame_->Present(false); });
}

void Window::ShowModal() {
    /// Ends the modal state, also when the thread that waits is killed.
    struct Modal {
        explicit Modal(Window& shown) : window(shown) { window.modalEnd_ = &closed; }
        ~Modal() {
            window.modalEnd_ = nullptr;
            window.Close();
            window.frame_->setWindowModality(Qt::NonModal);
        }
        Modal(const Modal&) = delete;
        Modal& operator=(const Modal&) = delete;
        Window& window;
        Completion closed;
    };

    const bool isNew = !realized_;
    const Ref<Window> alive(this);
    Realize();
    if ((isNew && !open_) || modalEnd_ || internal::IsQuitting()) return;
    bringBack();
    Modal modal(*this);
    RunOnMainStack([this] { frame_->Present(true); });
    modal.closed.Wait();
}

void Window::Close() {
    if (!std::exchange(open_, false)) return;
    const Ref<Window> alive(this);
    Dispatch([this] { Event_Close(); });
    std::erase(openWindows(), alive);
    if (!internal::IsDisplayLost()) frame_->hide();
    if (modalEnd_) modalEnd_->Complete();
}

void Window::Title(const String& title) {
    title_ = title;
    if (internal::IsDisplayLost()) return;
    // "[*]" stands for a mark that Qt puts there; doubled, for itself.
    frame_->setWindowTitle(
        native::Harmless(native::ToQt(title)).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

int Window::Left() const {
    return frame_->Bounds().left();
}

void Window::Left(int left) {
    placed_ = true;
    frame_->move(left, Top());
}

int Window::Top() const {
    return frame_->Bounds().top();
}

void Window::Top(int top) {
    placed_ = true;
    frame_->move(Left(), top);
}

int Window::Width() const {
    return native::FromToolkit(frame_->Bounds().width());
}

void Window::Width(int width) {
    frame_->ResizeContent(QSize(native::ToToolkit(width), frame_->Bounds().height()));
}

int Window::Height() const {
    return native::FromToolkit(frame_->Bounds().height());
}

void Window::Height(int height) {
    frame_->ResizeContent(QSize(frame_->Bounds().width(), native::ToToolkit(height)));
}

void Window::MinWidth(int width) {
    minWidth_ = width;
    frame_->ApplyLimits();
}

void Window::MinHeight(int height) {
    minHeight_ = height;
    frame_->ApplyLimits();
}

void Window::MaxWidth(int width) {
    maxWidth_ = width;
    frame_->ApplyLimits();
}

void Window::MaxHeight(int height) {
    maxHeight_ = height;
    frame_->ApplyLimits();
}

void Window::Frame(int frame) {
    frameKind_ = frame;
    frame_->ApplyFlags();
    frame_->ApplyColors();
}

Color Window::BackColor() const {
    if (hasBackColor_) return backColor_;
    return frameKind_ == FrameMetal ? kMetal : native::FromQt(QApplication::palette().color(QPalette::Window));
}

void Window::BackColor(Color color) {
    backColor_ = color;
    HasBackColor(true);
}

void Window::HasBackColor(bool hasBackColor) {
    hasBackColor_ = hasBackColor;
    frame_->ApplyColors();
}

bool Window::Visible() const {
    return frame_->isVisible();
}

void Window::Visible(bool visible) {
    if (!realized_) return;
    if (visible) {
        Show();
    } else {
        frame_->hide();
    }
}

bool Window::FullScreen() const {
    return frame_->isFullScreen();
}

void Window::FullScreen(bool fullScreen) {
    frame_->Fill(Qt::WindowFullScreen, fullScreen);
}

bool Window::Maximized() const {
    return frame_->isMaximized();
}

void Window::Maximized(bool maximized) {
    frame_->Fill(Qt::WindowMaximized, maximized);
}

void Window::MenuBarVisible(bool visible) {
    menuBarVisible_ = visible;
    if (realized_) frame_->ApplyMenuBar();
}

void Window::CloseButton(bool button) {
    closeButton_ = button;
    frame_->ApplyFlags();
}

void Window::MaximizeButton(bool button) {
    maximizeButton_ = button;
    frame_->ApplyFlags();
}

void Window::MinimizeButton(bool button) {
    minimizeButton_ = button;
    frame_->ApplyFlags();
}

void Window::Resizeable(bool resizeable) {
    resizeable_ = resizeable;
    frame_->ApplyLimits();
}

void Window::MouseCursor(Cursor cursor) {
    mouseCursor_ = cursor;
    if (cursor == Cursor::HandClosed) {
        frame_->setCursor(Qt::ClosedHandCursor);
    } else {
        frame_->unsetCursor();
    }
}

void Window::AcceptFileDrop(const String&) {
    frame_->setAcceptDrops(true);
}

void Window::AddShortcut(const String& keys, const std::function<void()>& act) {
    auto* const shortcut = new QShortcut(native::KeysOf(keys), frame_);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, frame_, [this, act] {
        const Ref<Window> alive(this);
        Dispatch(act);
    });
}

void Window::Add(const Ref<RectControl>& control) {
    controls_.push_back(control);
    QWidget* const widget = control->Native();
    if (As<Toolbar>(control)) {
        frame_->SetToolbar(widget);
        return;
    }
    const bool hidden = widget->testAttribute(Qt::WA_WState_ExplicitShowHide) && widget->isHidden();
    const int left = control->Left();
    const int top = control->Top();
    const int width = control->Width();
    const int height = control->Height();
    widget->setParent(&frame_->Content());
    // Its place counts in the content as large as it is now.
    control->Place(left, top, width, height);
    if (!hidden) widget->show();
    if (realized_) orderTabs();
}

std::vector<Ref<RectControl>> Window::controlsInTabOrder() const {
    std::vector<Ref<RectControl>> inOrder = controls_;
    std::stable_sort(inOrder.begin(), inOrder.end(),
                     [](const auto& one, const auto& other) { return one->TabIndex() < other->TabIndex(); });
    return inOrder;
}

/// Left to itself, the toolkit takes a tool or the default button, which Return presses from everywhere.
void Window::focusFirst() {
    for (const Ref<RectControl>& control : controlsInTabOrder()) {
        QWidget* const widget = control->Native();
        const QWidget* const taker = widget->focusProxy() ? widget->focusProxy() : widget;
        if (!(taker->focusPolicy() & Qt::TabFocus) || !control->Enabled() || !control->Visible()) continue;
        widget->setFocus(Qt::OtherFocusReason);
        return;
    }
}

void Window::orderTabs() {
    QWidget* last = nullptr;
    for (const Ref<RectControl>& control : controlsInTabOrder()) {
        for (QWidget* const stop : control->TabStops()) {
            if (last) QWidget::setTabOrder(last, stop);
            last = stop;
        }
    }
}

/// In the middle of the screen, a little above it.
void Window::placeOnScreen() {
    const QScreen* screen = QApplication::primaryScreen();
    if (!screen) return;
    const QRect area = screen->availableGeometry();
    const QSize room = area.size() - frame_->size();
    frame_->move(area.left() + std::max(0, room.width() / 2), area.top() + std::max(0, room.height() / 3));
}

void internal::CloseAllWindows() {
    for (auto windows = openWindows(); !windows.empty(); windows.pop_back()) windows.back()->Close();
}

void internal::BringWindowsToFront() {
    QWidget* const dialog = QApplication::activeModalWidget();
    for (const Ref<Window>& window : openWindows()) {
        if (!window->Visible()) continue;
        if (dialog) {
            window->Native()->raise();
        } else {
            window->Native()->BringToFront();
        }
    }
    if (!dialog) return;
    // The keys stay with the dialog, for which the windows wait.
    dialog->raise();
    dialog->activateWindow();
}

}  // namespace framework
