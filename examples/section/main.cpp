#include <unistd.h>

#include <iostream>

#include <zt/frame/LibraryStart.h>

#include "section/Program.h"

int main(int argc, char** argv) {
    ZT::InitBedrockDll();
    return section::RunProgram({argv + 1, argv + argc}, std::cout, std::cerr,
                               isatty(STDERR_FILENO) != 0);
}
