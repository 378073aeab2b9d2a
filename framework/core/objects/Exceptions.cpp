// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Exceptions.h"

#include <utility>

#include "framework/core/objects/Ref.h"

namespace framework {

RuntimeException::RuntimeException(String message, int errorNumber)
    : message_(std::move(message)), errorNumber_(errorNumber) {}

void RuntimeException::Explanation(String explanation) {
    explanation_ = std::move(explanation);
}

const char* RuntimeException::what() const noexcept {
    return message_.CString();
}

void RaiseNilObject() {
    throw NilObjectException();
}

}  // namespace framework
