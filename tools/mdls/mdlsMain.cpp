#include "tools/mdls/mdls.h"
#include "tools/service/ToolMain.h"

int main(int argumentCount, char** arguments) {
    marrowbeck::tools::Mdls tool;
    return marrowbeck::tools::runTool(tool, argumentCount, arguments);
}
