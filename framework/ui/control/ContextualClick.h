// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework {

/// Whether the event being handled asks for a contextual menu: a press of the right button, or of the menu key. False
/// outside events, and on background threads.
bool IsContextualClick();

namespace internal {

/// Tells for its lifetime what IsContextualClick answers; a control makes one around the handling of each press.
class ContextualClick {
  public:
    explicit ContextualClick(bool asked) noexcept;
    ~ContextualClick();
    ContextualClick(const ContextualClick&) = delete;
    ContextualClick& operator=(const ContextualClick&) = delete;

  private:
    bool outer_;
};

}  // namespace internal
}  // namespace framework
