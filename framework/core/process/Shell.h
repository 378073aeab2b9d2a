// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

/// Runs command lines as `/bin/sh -c` does, one after the other. The program's own tools come first on the search path;
/// the working folder is an empty one, so that a pattern such as *image matches no file and stays as it is. A thread
/// that executes a command parks until the command has ended, and ends it, with its children, when it is killed
/// meanwhile; the main thread blocks.
class Shell : public Object {
  public:
    /// Runs `command` to its end. Raises ShellNotAvailableException when no process can be started at all.
    void Execute(const String& command);

    /// The last command's exit status; 127 when a shell did not find it, 128 plus the signal that ended it. 0 before
    /// the first one.
    int ErrorCode() const { return errorCode_; }
    /// All that the last command printed on its standard output, NUL bytes among it, labelled UTF-8.
    const String& Result() const { return result_; }

    /// The folder of the program's own tools, as bytes; empty for none. Set once at start. Those of the tools that are
    /// named in `resident` stay open: a line of plain words that begins with such a name is a message to the running
    /// tool instead of a process, and nothing else shows of it. A new file that a tool of ours makes is its owner's
    /// alone.
    static void SetToolsFolder(const String& folder, const std::vector<std::string>& resident = {});
    /// What commands print on standard error goes to ours from now on, also where that is no terminal.
    static void PassErrorsOn();
    /// For a program without an event loop: SIGTERM, SIGINT and SIGHUP end it at once, as ever, but leave none of the
    /// files behind that commands need.
    static void TidyUpAtSignals();
    /// Starts the resident tools, so that the first command finds them ready.
    static void Prepare();

    /// A hint that `command` will be executed soon, for a resident tool to answer ahead; the answer counts for two
    /// seconds. Without effect for any other line. To be given for a few dozen at a time.
    static void Expect(const String& command);
    /// What was expected, all or that command, will not come.
    static void ExpectNothing();
    static void ExpectNothing(const String& command);

  private:
    int errorCode_ = 0;
    String result_;
};

namespace internal {

class ResidentTool;

/// The tool of this name, if it is one of those that stay open, else null.
ResidentTool* ResidentToolCalled(std::string_view name);

}  // namespace internal

}  // namespace framework
