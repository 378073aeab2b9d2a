#include "tools/mdls/mdls.h"
#include "tools/service/ToolMain.h"

int main(int argumentCount, char** arguments) {
    return marrowbeck::tools::runTool(marrowbeck::tools::Mdls(), argumentCount, arguments);
}
