#include "app/Startup.h"

int main(int argc, char** argv) {
    return marrowbeck::_Main(argc, argv);
}
