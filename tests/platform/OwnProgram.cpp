#include "platform/OwnProgram.h"

#include <cstdlib>

std::filesystem::path& ownProgram() {
    static std::filesystem::path program;
    return program;
}

int startOwnProgram(const std::string& arguments) {
    // Begins with a command that does nothing: a command line must not begin with a quote for both systems' shells to
    // understand it alike.
    return std::system(("cd . && \"" + ownProgram().string() + "\" " + arguments).c_str());
}
