// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/Alert.h"

#include <cstdio>
#include <utility>

namespace framework {
namespace {

std::function<void(const String&)>& presenter() {
    static std::function<void(const String&)> present;
    return present;
}

}  // namespace

void MsgBox(const String& text) {
    if (presenter()) {
        presenter()(text);
    } else {
        std::fprintf(stderr, "%s\n", text.CString());
    }
}

void internal::SetAlertPresenter(std::function<void(const String& text)> present) {
    presenter() = std::move(present);
}

}  // namespace framework
