// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/VersionLine.h"

#include "app/App.h"

namespace marrowbeck {

String VersionLine() {
    const Ref<App> app = App::Current();
    return "Marrowbeck Version " + Str(app->MajorVersion()) + "." + Str(app->MinorVersion()) + "." +
           Str(app->BugVersion());
}

}  // namespace marrowbeck
