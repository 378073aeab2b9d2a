// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/ActivationToken.h"

#include <unistd.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace framework::internal {
namespace {

bool isToken(std::string_view variable) {
    return std::any_of(std::begin(kActivationVariables), std::end(kActivationVariables),
                       [variable](const char* name) { return variable.starts_with(std::string(name) + "="); });
}

std::function<String()>& maker() {
    static std::function<String()> make;
    return make;
}

}  // namespace

String ActivationToken() {
    return maker() ? maker()() : String();
}

std::vector<std::string> EnvironmentWithActivation(const String& token) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry; ++entry) {
        // One that is left from this program's own start is used up.
        if (!isToken(*entry)) environment.emplace_back(*entry);
    }
    if (token.IsEmpty()) return environment;
    for (const char* name : kActivationVariables) environment.push_back(std::string(name) + "=" + token.ToStd());
    return environment;
}

void SetActivationTokenMaker(std::function<String()> make) {
    maker() = std::move(make);
}

}  // namespace framework::internal
