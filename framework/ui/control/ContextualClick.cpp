// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/ContextualClick.h"

#include <utility>

#include "framework/core/threads/Dispatch.h"

namespace framework {
namespace {

bool contextualClickAsked = false;

}  // namespace

bool IsContextualClick() {
    return contextualClickAsked && !internal::OnThread();
}

namespace internal {

ContextualClick::ContextualClick(bool asked) noexcept : outer_(std::exchange(contextualClickAsked, asked)) {}

ContextualClick::~ContextualClick() {
    contextualClickAsked = outer_;
}

}  // namespace internal
}  // namespace framework
