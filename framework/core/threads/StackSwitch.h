// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>

// Tells AddressSanitizer, where it is built in, of each change of stack; without this it takes the other stack's
// variables for overflows.

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace framework::internal {

#if defined(__SANITIZE_ADDRESS__)
inline void LeaveStack(void** shadow, std::size_t bottom, std::size_t size) {
    __sanitizer_start_switch_fiber(shadow, reinterpret_cast<const void*>(bottom), size);
}
inline void ArriveOnStack(void* shadow, std::size_t* leftBottom, std::size_t* leftSize) {
    const void* bottom = nullptr;
    __sanitizer_finish_switch_fiber(shadow, &bottom, leftSize);
    *leftBottom = reinterpret_cast<std::size_t>(bottom);
}
#else
inline void LeaveStack(void**, std::size_t, std::size_t) {}
inline void ArriveOnStack(void*, std::size_t*, std::size_t*) {}
#endif

}  // namespace framework::internal
