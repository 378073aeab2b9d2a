#include "tools/service/ToolMain.h"
#include "tools/sips/sips.h"

int main(int argumentCount, char** arguments) {
    return marrowbeck::tools::runTool(marrowbeck::tools::Sips(), argumentCount, arguments);
}
