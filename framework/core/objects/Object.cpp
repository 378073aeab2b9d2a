// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Object.h"

namespace framework {

void Object::destroy() const noexcept {
    delete this;
}

}  // namespace framework
