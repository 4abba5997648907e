// The test program itself, started again as a second process.
#pragma once

#include <filesystem>
#include <string>

// Its file.
std::filesystem::path& ownProgram();

// Starts it with these arguments and waits for its end; its exit code.
int startOwnProgram(const std::string& arguments);
