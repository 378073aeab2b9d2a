// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/menu/MenuItem.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QPointer>
#include <optional>
#include <string_view>

#include "framework/core/desktop/Application.h"
#include "framework/core/objects/Exceptions.h"
#include "framework/core/threads/Dispatch.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/field/EditTarget.h"
#include "framework/ui/menu/KeySequence.h"

namespace framework {
namespace {

/// While a contextual menu is open: where its answer goes.
Ref<MenuItem>* contextualAnswer = nullptr;

std::optional<EditTarget::Command> editCommandNamed(const String& name) {
    struct Entry {
        std::string_view Name;
        EditTarget::Command Command;
    };
    constexpr Entry kEntries[] = {
        {"EditUndo", EditTarget::Command::Undo},   {"EditCut", EditTarget::Command::Cut},
        {"EditCopy", EditTarget::Command::Copy},   {"EditPaste", EditTarget::Command::Paste},
        {"EditClear", EditTarget::Command::Clear}, {"EditSelectAll", EditTarget::Command::SelectAll},
    };
    for (const Entry& entry : kEntries) {
        if (name == String(entry.Name)) return entry.Command;
    }
    return std::nullopt;
}

}  // namespace

/// The toolkit's action and, for an item with items below it, its menu; one for all the windows that show it.
class MenuItem::Action : public QAction {
  public:
    ~Action() override { delete Menu.data(); }

    QPointer<QMenu> Menu;
};

MenuItem::MenuItem(const String& text) : action_(std::make_unique<Action>()) {
    QObject::connect(action_.get(), &QAction::triggered, action_.get(), [this] { Choose(); });
    Text(text);
}

MenuItem::~MenuItem() = default;

void MenuItem::Text(const String& text) {
    text_ = text;
    const bool isLine = text.SameBytes("-");
    action_->setSeparator(isLine);
    // The toolkit would draw a line's text as the title of what follows.
    action_->setText(isLine ? QString() : native::ToQt(text));
    if (action_->Menu) action_->Menu->setTitle(native::ToQt(text));
}

void MenuItem::KeyboardShortcut(const String& keys) {
    shortcut_ = keys;
    action_->setShortcut(native::KeysOf(keys));
}

void MenuItem::AutoEnable(bool autoEnable) {
    autoEnable_ = autoEnable;
    EnableAtRest();
}

void MenuItem::Enabled(bool enabled) {
    enabled_ = enabled;
    EnableAtRest();
}

void MenuItem::Append(const Ref<MenuItem>& item) {
    Native()->addAction(item->items_.empty() ? static_cast<QAction*>(item->action_.get())
                                             : item->Native()->menuAction());
    items_.push_back(item);
}

Ref<MenuItem> MenuItem::Item(int index) const {
    if (index < 0 || index >= Count()) throw OutOfBoundsException();
    return items_[static_cast<std::size_t>(index)];
}

QMenu* MenuItem::Native() {
    if (!action_->Menu) {
        action_->Menu = new QMenu(native::ToQt(text_));
        QObject::connect(action_->Menu, &QMenu::aboutToShow, action_.get(), [this] { enableForMenu(); });
        QObject::connect(action_->Menu, &QMenu::aboutToHide, action_.get(), [this] { EnableAtRest(); });
    }
    return action_->Menu;
}

Ref<MenuItem> MenuItem::PopUp(int screenX, int screenY) {
    Ref<MenuItem> answer;
    contextualAnswer = &answer;
    Native()->exec(QPoint(screenX, screenY));
    contextualAnswer = nullptr;
    return answer;
}

bool MenuItem::IsApplicable() const {
    const Ref<Application> application = Application::Current();
    const bool handled = application && application->HasMenuHandler(name_);
    return enabled_ && (handled || (autoEnable_ && CanPerform()));
}

void MenuItem::Choose() {
    const Ref<MenuItem> alive(this);
    if (contextualAnswer) {
        *contextualAnswer = alive;
        return;
    }
    const Ref<Application> application = Application::Current();
    if (application && application->RunMenuHandler(name_)) return;
    if (autoEnable_ && enabled_) Dispatch([this] { Perform(); });
}

void MenuItem::enableForMenu() {
    for (const Ref<MenuItem>& item : items_) {
        const bool isMenu = !item->items_.empty();
        item->action_->setEnabled(contextualAnswer || isMenu ? item->enabled_ : item->IsApplicable());
    }
}

void MenuItem::EnableAtRest() {
    action_->setEnabled(enabled_ && (autoEnable_ || IsApplicable()));
    for (const Ref<MenuItem>& item : items_) item->EnableAtRest();
}

bool MenuItem::Perform() {
    const auto command = editCommandNamed(name_);
    EditTarget* const target = EditTarget::Focused();
    if (!command || !target || !target->CanEdit(*command)) return false;
    target->Edit(*command);
    return true;
}

bool MenuItem::CanPerform() const {
    const auto command = editCommandNamed(name_);
    const EditTarget* const target = EditTarget::Focused();
    return command && target && target->CanEdit(*command);
}

void MenuItem::SetRole(Role role) {
    action_->setMenuRole(role == Role::Quit    ? QAction::QuitRole
                         : role == Role::About ? QAction::AboutRole
                                               : QAction::NoRole);
}

QuitMenuItem::QuitMenuItem(const String& text) : MenuItem(text) {
    SetRole(Role::Quit);
}

bool QuitMenuItem::Perform() {
    Quit(0);
    return true;
}

AppleMenuItem::AppleMenuItem(const String& text) : MenuItem(text) {
    SetRole(Role::About);
}

}  // namespace framework
