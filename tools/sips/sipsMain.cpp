#include "tools/sips/sips.h"
#include "tools/service/ToolMain.h"

int main(int argumentCount, char** arguments) {
    marrowbeck::tools::Sips tool;
    return marrowbeck::tools::runTool(tool, argumentCount, arguments);
}
