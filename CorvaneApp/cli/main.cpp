// The command-line tool: its real services and one command line.

#include "CorvaneApp/cli/SystemToolServices.hpp"
#include "CorvaneApp/cli/Tool.hpp"

#include <iostream>

int main(int argc, char** argv) {
    corvane::SystemToolServices system;
    corvane::ToolStreams streams{std::cout, std::cerr, &std::cin};
    return corvane::runTool(argc, argv, system.services(), streams);
}
