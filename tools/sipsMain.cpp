#include <QtGlobal>

#include "tools/ToolMain.h"
#include "tools/sips.h"

int main(int argumentCount, char** arguments) {
    // The largest picture that a decoder may lay out whole, and half as much again to work on it.
    marrowbeck::tools::limitProcess(1536ULL << 20, 60);
    // Decoders grumble about pictures that they then read well; what matters we say ourselves.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return marrowbeck::tools::runTool(marrowbeck::tools::sips, argumentCount, arguments);
}
