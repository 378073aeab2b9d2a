// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework {

/// What bytes can be written to, be it a file or a connection.
class Writeable {
  public:
    virtual void Write(const String& bytes) = 0;

  protected:
    ~Writeable() = default;
};

}  // namespace framework
