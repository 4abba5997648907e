// Renders inside the test program.
#pragma once

#include "host/Renderer.h"

#include <cstddef>
#include <string>
#include <vector>

// The event list of a script, rendered with two inputs and three outputs.
[[nodiscard]] std::string renderScript(const std::string& script, const std::string& program = {},
                                       std::size_t batch = Host::Renderer::usualBatch, int tail = 7680);

// Runs the command line as the program would; gives the exit code and what went to standard error and output.
struct ProgramRun {
    int exitCode;
    std::string error;
    std::string output;
};
[[nodiscard]] ProgramRun runTembrel(const std::vector<std::string>& arguments);
