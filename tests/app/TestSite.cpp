// SPDX-License-Identifier: GPL-2.0-or-later
#include "tests/app/AppTest.h"

namespace marrowbeck {

UpdateSite test::theSite;

UpdateSite UpdateSite::Configured() {
    return test::theSite;
}

}  // namespace marrowbeck
