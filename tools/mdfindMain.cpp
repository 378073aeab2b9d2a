#include "tools/ToolMain.h"
#include "tools/mdfind.h"

int main(int argumentCount, char** arguments) {
    return marrowbeck::tools::runTool(marrowbeck::tools::mdfind, argumentCount, arguments);
}
