#include "host/CommandLine.h"

#include "core/QelUtils.h"
#include "host/CheckCommand.h"
#include "host/Command.h"
#include "host/ImportCommand.h"
#include "host/MonitorCommand.h"
#include "host/PortsCommand.h"
#include "host/RenderCommand.h"
#include "host/RunCommand.h"
#include "host/TakeCommand.h"
#include "platform/StandardStreams.h"
#include "platform/ThreadServices.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
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
    commands.push_back(std::make_unique<PortsCommand>(commandLine));
    commands.push_back(std::make_unique<MonitorCommand>(commandLine));
    commands.push_back(std::make_unique<TakeCommand>(commandLine));
    commands.push_back(std::make_unique<CheckCommand>(commandLine));
    commands.push_back(std::make_unique<ImportCommand>(commandLine));
    return commands;
}

// What follows the first line explains; one line is what a failure says.
std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

// The arguments behind the program's name. The verb "run" may be left out.
std::vector<std::string> argumentsOf(int argc, const char* const* argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    constexpr std::string_view wishes[] = {"-h", "--help", "--version"};
    const bool hasVerb = !arguments.empty() && !arguments.front().starts_with('-');
    const bool isWish = !arguments.empty() && std::count(std::begin(wishes), std::end(wishes), arguments.front()) > 0;
    if (!hasVerb && !isWish) {
        arguments.insert(arguments.begin(), "run");
    }
    return arguments;
}

// Nothing when there is work to do, else the exit code.
std::optional<int> parse(CLI::App& commandLine, const Commands& commands, std::vector<std::string> arguments) {
    const std::string& verb = arguments.front();
    if (!verb.starts_with('-') &&
        std::ranges::none_of(commands, [&verb](const auto& command) { return command->verb().get_name() == verb; })) {
        std::cerr << "tembrel: there is no verb \"" << verb << "\" (--help explains)\n";
        return wrongUsage;
    }
    std::reverse(arguments.begin(), arguments.end()); // as the parser wants them
    try {
        commandLine.parse(std::move(arguments));
        return std::nullopt;
    } catch (const CLI::Success& wish) { // help or version
        (void)commandLine.exit(wish);
        return 0;
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
        CLI::App commandLine("Tembrel 3, a software MIDI controller. Without a verb: run.", "tembrel");
        commandLine.allow_windows_style_options(false); // a path may begin with a slash
        commandLine.set_version_flag("--version", Backend::QelUtils::NAME_AND_VERSION);
        commandLine.require_subcommand(1);
        const Commands commands = addCommands(commandLine);
        const std::optional<int> done = parse(commandLine, commands, argumentsOf(argc, argv));
        return done ? *done : run(commands);
    } catch (const std::exception& error) { // memory, threads: what nobody expects to run out of
        std::cerr << "tembrel: " << firstLine(error.what()) << '\n';
        return workFailed;
    }
}

} // namespace Host
