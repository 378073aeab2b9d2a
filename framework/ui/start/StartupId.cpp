// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/start/StartupId.h"

#include <unistd.h>

#include <QGuiApplication>
#include <QInputEvent>
#include <cerrno>
#include <string>

namespace framework {
namespace {

/// In milliseconds since the display began to count.
quint64 lastInput = 0;

bool isAct(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
           type == QEvent::MouseButtonDblClick || type == QEvent::KeyPress || type == QEvent::KeyRelease;
}

}  // namespace

void internal::NoteInput(const QEvent& event) {
    if (!event.spontaneous() || !isAct(event.type())) return;
    // The toolkit sends some on by itself, without a time.
    if (const quint64 time = static_cast<const QInputEvent&>(event).timestamp()) lastInput = time;
}

String internal::StartupIdOfLastInput() {
    if (lastInput == 0 || QGuiApplication::platformName() != QLatin1String("xcb")) return {};
    static unsigned count = 0;
    const std::string unique =
        std::string(program_invocation_short_name) + "-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
    return String(unique + "_TIME" + std::to_string(lastInput));
}

}  // namespace framework
