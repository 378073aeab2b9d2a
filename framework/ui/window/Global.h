// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <type_traits>
#include <typeindex>

#include "framework/ui/window/Window.h"

namespace framework {

namespace internal {

/// Where the one instance of a class is kept, Nil until it is made.
Ref<Object>& GlobalSlot(std::type_index type);
/// Lets go of all global instances, while the toolkit is still there to take their widgets down.
void ForgetGlobals();

}  // namespace internal

/// The one global instance of a class, made at its first use. A window is whole when it is returned: it has its
/// controls, and its Event_Open is over, unless it is that very event that asks.
template <class T>
Ref<T> Global() {
    Ref<Object>& slot = internal::GlobalSlot(typeid(T));
    if (!slot) {
        const Ref<T> made = New<T>();
        internal::GlobalSlot(typeid(T)) = made;
        if constexpr (std::is_base_of_v<Window, T>) made->Realize();
        return made;
    }
    return Ref<T>(static_cast<T*>(slot.Get()));
}

}  // namespace framework
