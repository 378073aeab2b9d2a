// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/StackCheck.h"

#include <pthread.h>

#include <cstddef>

#include "framework/core/objects/Exceptions.h"
#include "framework/core/threads/Fiber.h"
#include "framework/core/threads/Scheduler.h"

namespace framework {
namespace {

/// Left for raising the exception and for the destructors and handlers that then run.
constexpr std::size_t kReserve = 192UL * 1024;

/// Without a limit set for it the main stack may be as large as the address space; no recursion that means to end needs
/// more than this.
constexpr std::size_t kMostOfMainStack = 64UL * 1024 * 1024;

internal::StackBounds mainBounds() {
    internal::StackBounds bounds;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return bounds;
    void* lowest = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attributes, &lowest, &size);
    pthread_attr_destroy(&attributes);
    bounds.bottom = reinterpret_cast<std::size_t>(lowest);
    bounds.top = bounds.bottom + size;
    if (size > kMostOfMainStack) bounds.bottom = bounds.top - kMostOfMainStack;
    return bounds;
}

}  // namespace

void CheckStack() {
    static const internal::StackBounds kMain = mainBounds();
    Thread* const thread = internal::Scheduler::Instance().Current();
    const std::size_t bottom = thread ? internal::Scheduler::Instance().CurrentBounds().bottom : kMain.bottom;
    const auto here = reinterpret_cast<std::size_t>(__builtin_frame_address(0));
    if (here < bottom + kReserve) throw StackOverflowException("The calls of this thread are nested too deeply.");
}

}  // namespace framework
