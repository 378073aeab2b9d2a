// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/System.h"

#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace framework {

void System::DebugLog(const String& text) {
    syslog(LOG_USER | LOG_NOTICE, "%s", text.CString());
    if (isatty(STDERR_FILENO) == 1) std::fprintf(stderr, "%s\n", text.CString());
}

String System::FileErrorReason(int errorNumber) {
    switch (errorNumber) {
        case ENOSPC:
        case EDQUOT:
            return "the disk is full";
        case EFBIG:
            return "the file would be larger than allowed";
        case EROFS:
            return "the disk can only be read";
        case EACCES:
        case EPERM:
            return "you have no right to write there";
        case ENOENT:
        case ENOTDIR:
            return "there is no such folder";
        default:
            return std::strerror(errorNumber);
    }
}

}  // namespace framework
