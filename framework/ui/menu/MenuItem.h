// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

class QMenu;

namespace framework {

/// A command in a menu, or a menu with commands of its own. When a person chooses it, the application's handler for its
/// name runs; without one, what the framework itself does for such an item.
class MenuItem : public Object {
  public:
    explicit MenuItem(const String& text = {});
    ~MenuItem() override;

    String Name() const { return name_; }
    void Name(const String& name) { name_ = name; }
    /// The text; `&` stands before the letter that chooses it by key. "-" alone is a line between items.
    String Text() const { return text_; }
    void Text(const String& text);
    /// The keys that choose it from anywhere: "Cmd+Q", "Shift+Cmd+S", "F5". Cmd is the desktop's own key for commands,
    /// the Control key; a letter or digit alone is meant with it.
    String KeyboardShortcut() const { return shortcut_; }
    void KeyboardShortcut(const String& keys);
    /// Whether the item is enabled by itself whenever it would do something. Otherwise it is enabled when Enabled says
    /// so and a handler is bound to its name.
    bool AutoEnable() const { return autoEnable_; }
    void AutoEnable(bool autoEnable);
    bool Enabled() const { return enabled_; }
    void Enabled(bool enabled);

    /// Items below this one; there being any makes it a menu.
    void Append(const Ref<MenuItem>& item);
    /// The item at `index`, from 0; OutOfBoundsException beyond.
    Ref<MenuItem> Item(int index) const;
    int Count() const { return static_cast<int>(items_.size()); }

    /// Opens the items below this one as a contextual menu at a place on the screen, and returns the one that was
    /// chosen, or Nil. No handler is called. Main thread only.
    Ref<MenuItem> PopUp(int screenX, int screenY);

    /// Whether choosing it would do anything.
    bool IsApplicable() const;
    /// Does what choosing the item does.
    void Choose();
    /// Enables the item and those below it as they are to be outside an open menu: what has its own sense of when it
    /// applies stays enabled there, so that its keys always reach it.
    void EnableAtRest();

    /// The toolkit's menu of the items below. For the framework alone.
    QMenu* Native();

  protected:
    /// What the framework does when the application has no handler. False when there is nothing.
    virtual bool Perform();
    /// Whether Perform would do something now.
    virtual bool CanPerform() const;
    /// The place that a desktop may give the item, apart from its own menu.
    enum class Role { None, About, Quit };
    void SetRole(Role role);

  private:
    class Action;

    void enableForMenu();

    std::unique_ptr<Action> action_;
    std::vector<Ref<MenuItem>> items_;
    String name_;
    String text_;
    String shortcut_;
    bool autoEnable_ = true;
    bool enabled_ = true;
};

/// The item that ends the program.
class QuitMenuItem : public MenuItem {
  public:
    explicit QuitMenuItem(const String& text = {});

  protected:
    bool Perform() override;
    bool CanPerform() const override { return true; }
};

/// An item that some desktops show in a menu of the application's own name; here it stands where it was put.
class AppleMenuItem : public MenuItem {
  public:
    explicit AppleMenuItem(const String& text = {});
};

}  // namespace framework
