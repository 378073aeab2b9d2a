// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace marrowbeck {

/// The whole life of the application, from the process's arguments to its exit status.
int _Main(int argc, char** argv);

/// Builds the application object and what it needs; called once by the framework while it initialises. 0 for success.
int _Startup();

/// Where the program's own tools lie; also for what the command line asks without a window.
void _InitTools();
void _InitFileTypes();
void _NewAppInstance();
void _ApplicationAddMenuHandlers();

}  // namespace marrowbeck
