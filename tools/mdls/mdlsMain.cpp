#include "tools/service/ToolMain.h"
#include "tools/mdls/mdls.h"

int main(int argumentCount, char** arguments) {
    // Far more than any picture's metadata takes; what wants more is no picture.
    marrowbeck::tools::limitProcess(1ULL << 30, 20);
    return marrowbeck::tools::runTool(marrowbeck::tools::mdls, argumentCount, arguments);
}
