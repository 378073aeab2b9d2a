#include "framework/core/System.h"

#include <syslog.h>
#include <unistd.h>

#include <cstdio>

namespace framework {

void System::DebugLog(const String& text) {
    syslog(LOG_USER | LOG_NOTICE, "%s", text.CString());
    if (isatty(STDERR_FILENO) == 1) std::fprintf(stderr, "%s\n", text.CString());
}

}  // namespace framework
