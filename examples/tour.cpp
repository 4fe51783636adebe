// The main job on a model file, step by step: `example-tour FILE`. The steps are in the folder `tour`, each a page to copy
// from.

#include "tour/Tour.h"

#include <ZEL/logging/Logger.h>

#include <exception>
#include <iostream>

int main(int argc, char ** argv) {
    if (argc != 2) {
        std::cerr << "usage: example-tour FILE\n";
        return 2;
    }
    // The library tells of each file that it reads and writes; here the tour does.
    ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
    try {
        tour::run(argv[1], std::cout);
        return 0;
    } catch (std::exception const & exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
}
