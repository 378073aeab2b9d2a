// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/ShowURL.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "framework/core/process/ActivationToken.h"

namespace framework {

namespace {

/// Starts the opener in a session of its own, so that what it opens outlives this program's terminal. -1 on failure.
pid_t startOpener(const String& url) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigaddset(&signals, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &signals);

    const char* const opener = "xdg-open";
    char* const arguments[] = {const_cast<char*>(opener), const_cast<char*>(url.CString()), nullptr};
    std::vector<std::string> variables = internal::EnvironmentWithActivation(internal::ActivationToken());
    std::vector<char*> environment;
    environment.reserve(variables.size() + 1);
    for (std::string& variable : variables) environment.push_back(variable.data());
    environment.push_back(nullptr);
    pid_t process = -1;
    if (::posix_spawnp(&process, opener, &files, &attributes, arguments, environment.data()) != 0) process = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return process;
}

}  // namespace

bool ShowURL(const String& url) {
    const std::string_view bytes = url.Bytes();
    // A leading dash would be read as an option.
    if (bytes.empty() || bytes.front() == '-' || bytes.find('\0') != std::string_view::npos) return false;
    const pid_t process = startOpener(url);
    if (process < 0) return false;
    // Some openers stay until their application is closed. This waits for the end of the process and touches nothing
    // of the program's.
    std::thread([process] {
        while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }).detach();
    return true;
}

}  // namespace framework
