#include "framework/ui/Desktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

#include "framework/core/Waiting.h"
#include "framework/ui/Native.h"

namespace framework {

void ShowURL(const String& url) {
    const QUrl target(native::ToQt(url));
    if (!target.isValid() || target.isRelative()) return;
    // Starting the handler can take more stack than a thread has.
    RunOnMainStack([&target] { QDesktopServices::openUrl(target); });
}

void Beep() {
    QApplication::beep();
}

}  // namespace framework
