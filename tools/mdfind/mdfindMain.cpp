#include "tools/service/ToolMain.h"
#include "tools/mdfind/mdfind.h"

int main(int argumentCount, char** arguments) {
    return marrowbeck::tools::runTool(marrowbeck::tools::mdfind, argumentCount, arguments);
}
