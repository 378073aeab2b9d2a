#include <QtGlobal>

#include "tools/ToolMain.h"
#include "tools/sips.h"

namespace {

/// The largest picture that a decoder may lay out whole, and half as much again to work on it.
constexpr unsigned long long mostMemory = 1536ULL << 20;

/// Several times what the largest picture that can be read takes.
constexpr unsigned mostProcessorSeconds = 60;

}  // namespace

int main(int argumentCount, char** arguments) {
    marrowbeck::tools::limitProcess(mostMemory, mostProcessorSeconds);
    // Decoders grumble about pictures that they then read well; what matters we say ourselves.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return marrowbeck::tools::runTool(marrowbeck::tools::sips, argumentCount, arguments);
}
