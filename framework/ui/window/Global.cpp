// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/Global.h"

#include <map>
#include <utility>

namespace framework::internal {
namespace {

std::map<std::type_index, Ref<Object>>& globals() {
    static std::map<std::type_index, Ref<Object>> instances;
    return instances;
}

}  // namespace

Ref<Object>& GlobalSlot(std::type_index type) {
    return globals()[type];
}

void ForgetGlobals() {
    // The destructors may ask for globals, so they run when the map is empty.
    const auto instances = std::exchange(globals(), {});
}

}  // namespace framework::internal
