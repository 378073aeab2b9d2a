// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QAccessible>

namespace framework::native {

/// A widget that tells a screen reader what it is, where the toolkit would call it nothing in particular.
class AccessibleRole {
  public:
    virtual ~AccessibleRole() = default;
    virtual QAccessible::Role Role() const = 0;
};

/// Has the toolkit ask for those roles, from the first call on.
void AnnounceRoles();

}  // namespace framework::native
