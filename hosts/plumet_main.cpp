// plumet: the command-line host of the filter.
#include "hosts/CommandLineHost.h"

int main(int argc, char** argv) {
    return plumet::hosts::RunCommandLine(argc > 0 ? argc - 1 : 0, argv + (argc > 0 ? 1 : 0));
}
