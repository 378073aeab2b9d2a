// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/Configuration.h"
#include "net/UpdateSite.h"

namespace marrowbeck {

// In a file of its own, so that a test program can link another answer.
UpdateSite UpdateSite::Configured() {
    return {Configuration::kSiteHost, Configuration::kShortLinkHost};
}

}  // namespace marrowbeck
