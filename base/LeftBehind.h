// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

/// Children that were killed and were not over at once: what waits for a disk dies when that answers, and may take its
/// time. Nobody waits for them; the system gets them back when they have come to their end and the next one is ended or
/// started. For one thread.
namespace base::LeftBehind {

void Add(pid_t process);
/// Takes the status of those that are over meanwhile.
void Reap();

}  // namespace base::LeftBehind
