#include "host/CommandLine.h"

int main(int argc, char** argv) {
    return Host::runCommandLine(argc, argv);
}
