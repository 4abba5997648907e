// A second process that replaces a file again and again until it is torn away in the middle of that.
#pragma once

#include <filesystem>
#include <string>

inline constexpr const char* replacingChildOption = "--replacing-child";

// What the child writes in that turn: each of another length, and its pieces tell which it is.
std::string contentOfTurn(int turn);

// Arguments behind the option: the file, for how many milliseconds. Does not return when all goes well.
int runReplacingChild(int argc, char** argv);

// Starts the child and waits for its end; true when it ended as it should.
bool startReplacingChild(const std::filesystem::path& file, int milliseconds);
