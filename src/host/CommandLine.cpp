#include "host/CommandLine.h"

#include "host/Command.h"
#include "host/RenderCommand.h"
#include "host/RunCommand.h"
#include "platform/StandardStreams.h"
#include "platform/ThreadServices.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace Host {

namespace {

constexpr int workFailed = 1;
constexpr int wrongUsage = 2;

using Commands = std::vector<std::unique_ptr<Command>>;

Commands addCommands(CLI::App& commandLine) {
    Commands commands;
    commands.push_back(std::make_unique<RunCommand>(commandLine));
    commands.push_back(std::make_unique<RenderCommand>(commandLine));
    return commands;
}

// What follows the first line explains; one line is what a failure says.
std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

int parse(CLI::App& commandLine, int argc, const char* const* argv) {
    try {
        commandLine.parse(argc, argv);
        return 0;
    } catch (const CLI::Success& wish) { // help or version
        std::cout << std::flush;
        (void)commandLine.exit(wish);
        return -1;
    } catch (const CLI::ParseError& error) {
        std::cerr << "tembrel: " << firstLine(error.what()) << " (--help explains)\n";
        return wrongUsage;
    }
}

int run(const Commands& commands) {
    for (const auto& command : commands) {
        if (command->verb().parsed()) {
            return command->run();
        }
    }
    return wrongUsage;
}

// The services of the system that the main thread needs for as long as it works.
class MainThread final {
public:
    MainThread() {
        Platform::prepareStandardStreams();
        Platform::initializeThreadServices();
    }
    ~MainThread() { Platform::uninitializeThreadServices(); }
    MainThread(const MainThread&) = delete;
    MainThread& operator=(const MainThread&) = delete;
};

} // namespace

int runCommandLine(int argc, const char* const* argv) {
    try {
        const MainThread mainThread;
        CLI::App commandLine("Tembrel 3, a software MIDI controller", "tembrel");
        commandLine.set_version_flag("--version", "Tembrel 3.2");
        commandLine.require_subcommand(1);
        const Commands commands = addCommands(commandLine);
        const int parsed = parse(commandLine, argc, argv);
        return parsed != 0 ? std::max(parsed, 0) : run(commands);
    } catch (const std::exception& error) { // memory, threads: what nobody expects to run out of
        std::cerr << "tembrel: " << firstLine(error.what()) << '\n';
        return workFailed;
    }
}

} // namespace Host
