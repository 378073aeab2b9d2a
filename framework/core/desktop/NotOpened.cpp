// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/NotOpened.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "framework/core/desktop/Alert.h"
#include "framework/core/objects/Object.h"
#include "framework/core/threads/Scheduler.h"
#include "framework/core/threads/Thread.h"

namespace framework {
namespace {

/// More than these nobody reads; the others are counted.
constexpr std::size_t kMostReasons = 8;

struct Reasons {
    bool Has(const String& reason) const {
        return std::ranges::any_of(named, [&](const String& one) { return one.SameBytes(reason); });
    }
    void Add(const String& reason) {
        if (named.size() < kMostReasons) {
            named.push_back(reason);
        } else {
            ++others;
        }
    }
    String Text() const {
        String text = named.front();
        for (std::size_t i = 1; i < named.size(); ++i) text += "\n" + named[i];
        if (others > 0) text += String("\nAnd so it is with " + std::to_string(others) + " more.");
        return text;
    }

    std::vector<String> named;
    std::size_t others = 0;
};

/// Of the alert that stands, and of the one after it.
struct {
    Reasons told;
    Reasons waiting;
} theReasons;

void tellAll() {
    struct Over {
        ~Over() { theReasons = {}; }
    } const atEnd;
    while (!theReasons.told.named.empty()) {
        MsgBox(theReasons.told.Text());
        theReasons.told = std::exchange(theReasons.waiting, {});
    }
}

}  // namespace

void TellNotOpened(const String& reason) {
    auto& [told, waiting] = theReasons;
    if (told.Has(reason) || waiting.Has(reason)) return;
    if (!told.named.empty()) return waiting.Add(reason);
    told.Add(reason);
    const Ref<Thread> thread = New<Thread>();
    thread->OnRun = tellAll;
    internal::Scheduler::Instance().RunHandler(*thread);
}

}  // namespace framework
