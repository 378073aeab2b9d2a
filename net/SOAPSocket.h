// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

class InternetHeaders;

/// What a caller of remote procedures needs of a socket that speaks HTTP. HTTPSocket says what each operation does.
class _SOAPSocket {
  public:
    virtual int ErrorCode() const = 0;
    virtual String Get(const String& url, int timeout) = 0;
    virtual Ref<InternetHeaders> GetRequestHeaders() const = 0;
    virtual String Post(const String& url, int timeout) = 0;
    virtual void SetPostContent(const String& content, const String& contentType) = 0;

  protected:
    ~_SOAPSocket() = default;
};

}  // namespace marrowbeck
