// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// A file could not be put in the place of another. ErrorNumber is the operating system's, or 0 where the request made
/// no sense.
class FileReplaceException : public RuntimeException {
  public:
    FileReplaceException(int errorNumber, const String& message) : RuntimeException(message, errorNumber) {}
    String ClassName() const override { return "FileReplaceException"; }
};

}  // namespace marrowbeck
