// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

namespace framework {

/// Runs a handler that may have to wait, for the disk or a person, so that the events after it need not: as a plain
/// call up to where it first waits or has had its share of time, and from there on as a thread of its own, beside
/// others that wait. What raises in it goes where a handler's exceptions go. A program that quits ends it where it
/// stands, before anything else, and it shows and starts nothing more. On a thread this is a plain call.
void OnOwnThread(std::function<void()> handler);

}  // namespace framework
