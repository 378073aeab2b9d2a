// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

#include "framework/core/text/String.h"

namespace framework {

/// What the desktop knows a program by.
struct ProgramIdentity {
    /// The name that people read.
    String Name;
    /// The name of its desktop entry, without the suffix; also its name on the message bus.
    String DesktopName;
};

/// Begins the life of the program with windows: the toolkit, alerts and an orderly quit. Then `startup` makes the
/// application object. Returns its result, 0 when all went well; nothing else of the framework that has windows may be
/// used before.
int RunFrameworkInitialization(int argc, char** argv, const ProgramIdentity& identity,
                               const std::function<int()>& startup);

/// Raises the application's Open event, hands it the files and folders of the command line, and runs the event loop
/// until the application quits. Returns the exit code; the toolkit is gone then. When another process of the program
/// runs already, that one gets the files and folders, and this one returns 0 at once without any event.
int RuntimeRun();

namespace internal {

/// Takes down all that RunFrameworkInitialization and the program built, while the toolkit is still there to do it.
void EndFramework();

}  // namespace internal

}  // namespace framework
