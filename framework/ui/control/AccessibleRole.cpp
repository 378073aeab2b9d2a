// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace framework::native {
namespace {

QAccessibleInterface* withRole(const QString&, QObject* object) {
    const auto* const special = dynamic_cast<AccessibleRole*>(object);
    auto* const widget = dynamic_cast<QWidget*>(object);
    return special && widget ? new QAccessibleWidget(widget, special->Role()) : nullptr;
}

}  // namespace

void AnnounceRoles() {
    QAccessible::installFactory(withRole);  // a second installation of the same function counts for nothing
}

}  // namespace framework::native
