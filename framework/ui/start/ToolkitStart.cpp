// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/start/ToolkitStart.h"

#include <signal.h>
#include <unistd.h>

#include <QMessageLogContext>
#include <QString>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace framework {
namespace {

/// How long a display may take to answer, in seconds. One at the other end of a bad line needs some.
constexpr unsigned kPatience = 60;

struct Message {
    QtMsgType type;
    const char* category;
    QString text;
};

/// What the toolkit has said so far; it gives its reasons before it gives up.
std::vector<Message>& messages() {
    static std::vector<Message> kept;
    return kept;
}

std::string lineOf(const std::string& reason) {
    return std::string(program_invocation_short_name) + ": no window can be opened: " + reason + "\n";
}

/// For the signal handler, which may not make a text.
std::string& silentDisplayLine() {
    static std::string line;
    return line;
}

QtMessageHandler handlerBefore = nullptr;

void keep(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) return messages().push_back({type, context.category, text});
    QString reason = text;
    for (const Message& message : messages()) {
        if (message.type == QtWarningMsg || message.type == QtCriticalMsg) reason = message.text;
    }
    std::fputs(lineOf(reason.simplified().toStdString()).c_str(), stderr);
    std::_Exit(1);
}

void giveUp(int) {
    const std::string& line = silentDisplayLine();
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
    _exit(1);
}

}  // namespace

internal::ToolkitStart::ToolkitStart() {
    handlerBefore = qInstallMessageHandler(keep);
    silentDisplayLine() = lineOf("the display does not answer");
    signal(SIGALRM, giveUp);
    alarm(kPatience);
}

internal::ToolkitStart::~ToolkitStart() {
    alarm(0);
    signal(SIGALRM, SIG_DFL);
    qInstallMessageHandler(handlerBefore);
    for (const Message& message : std::exchange(messages(), {})) {
        handlerBefore(message.type, QMessageLogContext(nullptr, 0, nullptr, message.category), message.text);
    }
}

}  // namespace framework
