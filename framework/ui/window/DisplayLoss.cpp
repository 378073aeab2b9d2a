// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/DisplayLoss.h"

#include <QCoreApplication>
#include <QMessageLogContext>
#include <QString>
#include <QThread>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <utility>

namespace framework {
namespace {

/// How the messages begin that the toolkit writes before it ends the process. It gives no other notice: under X11 it
/// calls exit, under Wayland not even that.
constexpr const char* kLastWords[] = {"The X11 connection broke", "The Wayland connection "};

/// How long a helper thread of the toolkit, which may find the display gone before the main thread does, is held up
/// for that one to do its part. The main thread itself could be waiting for the helper.
constexpr std::chrono::seconds kPatience{10};

QtMessageHandler nextHandler = nullptr;
std::atomic<bool> isLost = false;

std::function<void()>& lossHandler() {
    static auto& handler = *new std::function<void()>;
    return handler;
}

void tellLoss() {
    isLost = true;
    if (const auto onLoss = std::exchange(lossHandler(), nullptr)) onLoss();
}

void tellLossFromAnyThread() {
    QCoreApplication* const program = QCoreApplication::instance();
    if (!program || QThread::currentThread() == program->thread()) return tellLoss();
    const auto told = std::make_shared<std::promise<void>>();
    const std::future<void> done = told->get_future();
    QMetaObject::invokeMethod(
        program,
        [told] {
            tellLoss();
            told->set_value();
        },
        Qt::QueuedConnection);
    done.wait_for(kPatience);
}

void lookAtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    nextHandler(type, context, message);
    for (const char* const words : kLastWords) {
        if (message.startsWith(QLatin1String(words))) return tellLossFromAnyThread();
    }
}

}  // namespace

void internal::OnDisplayLoss(std::function<void()> onLoss) {
    lossHandler() = std::move(onLoss);
    if (!nextHandler) nextHandler = qInstallMessageHandler(lookAtMessage);
}

bool internal::IsDisplayLost() {
    return isLost;
}

}  // namespace framework
