// SPDX-License-Identifier: GPL-2.0-or-later
#include "base/LeftBehind.h"

#include <sys/wait.h>

#include <vector>

namespace base::LeftBehind {
namespace {

std::vector<pid_t>& processes() {
    // Objects of static storage leave children behind, too.
    static auto& list = *new std::vector<pid_t>;
    return list;
}

}  // namespace

void Add(pid_t process) {
    processes().push_back(process);
}

void Reap() {
    std::erase_if(processes(), [](pid_t process) { return waitpid(process, nullptr, WNOHANG) != 0; });
}

}  // namespace base::LeftBehind
