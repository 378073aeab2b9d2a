#include <QtGlobal>

#include "tools/service/ToolMain.h"
#include "tools/sips/sips.h"

namespace {

/// The largest picture that a decoder may lay out whole, and half as much again to work on it.
constexpr unsigned long long mostMemory = 1536ULL << 20;

/// Three times what the largest picture takes that can be read. Someone is waiting for it.
constexpr unsigned mostProcessorSeconds = 30;

}  // namespace

int main(int argumentCount, char** arguments) {
    marrowbeck::tools::limitProcess(mostMemory, mostProcessorSeconds);
    // Decoders grumble about pictures that they then read well; what matters we say ourselves.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return marrowbeck::tools::runTool(marrowbeck::tools::sips, argumentCount, arguments);
}
