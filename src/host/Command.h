// A verb of the command line.
#pragma once

#include <CLI/CLI.hpp>

namespace Host {

// Each verb is a class whose constructor adds its subcommand, with options and help, to the command line given to it.
class Command {
public:
    virtual ~Command() = default;

    // The subcommand that the constructor has added; it lives as long as the command line.
    [[nodiscard]] virtual const CLI::App& verb() const = 0;
    // Does the work with what the command line said, once, and gives the exit code: 0 done, 1 the work failed and
    // standard error has the reason in one line, 2 the options do not fit together, said likewise. [main]
    [[nodiscard]] virtual int run() = 0;
};

} // namespace Host
