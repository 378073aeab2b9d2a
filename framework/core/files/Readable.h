// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/text/String.h"

namespace framework {

/// What bytes can be read from, be it a file or a connection.
class Readable {
  public:
    /// The next `count` bytes, or as many as there are, labelled with `encoding`.
    virtual String Read(int count, TextEncoding encoding) = 0;

  protected:
    ~Readable() = default;
};

}  // namespace framework
