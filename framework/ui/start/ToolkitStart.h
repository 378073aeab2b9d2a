// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework::internal {

/// The time in which the toolkit starts. By itself it aborts where there is no display, and waits for ever for one that
/// takes the connection and says nothing; while this lives, both end the process with one line on standard error and
/// status 1. What the toolkit has to say besides comes out when it has started. One at a time, on the main thread.
class ToolkitStart {
  public:
    ToolkitStart();
    ~ToolkitStart();
    ToolkitStart(const ToolkitStart&) = delete;
    ToolkitStart& operator=(const ToolkitStart&) = delete;
};

}  // namespace framework::internal
