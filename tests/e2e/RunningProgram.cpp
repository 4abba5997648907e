#include "e2e/RunningProgram.h"

#include "support/FileContent.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace {

bool within(std::chrono::seconds time, const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

} // namespace

bool eventually(const std::function<bool()>& condition) {
    return within(std::chrono::seconds(30), condition);
}

RunningProgram::RunningProgram(const std::string& program, std::vector<std::string> arguments,
                               const std::string& folder) {
    static std::atomic<int> number = 0;
    const std::string stem = folder + "/run" + std::to_string(++number);
    outputFile_ = stem + ".out";
    errorFile_ = stem + ".err";
    int pipe[2];
    if (pipe2(pipe, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe[0], STDIN_FILENO);
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile_.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile_.c_str(), flags, 0600);
    arguments.insert(arguments.begin(), program);
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    if (posix_spawnp(&pid_, program.c_str(), &actions, nullptr, argv.data(), environ) != 0) {
        pid_ = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    close(pipe[0]);
    input_ = pipe[1];
}

RunningProgram::~RunningProgram() {
    closeInput();
    // Who is killed without having left it keeps a JACK server waiting for seconds.
    signal(SIGTERM);
    if (!within(std::chrono::seconds(2), [this] { return !isRunning(); })) {
        kill(pid_, SIGKILL);
        waitpid(pid_, &status_, 0);
    }
}

void RunningProgram::write(const std::string& text) const {
    if (::write(input_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        throw std::runtime_error("the program does not read");
    }
}

void RunningProgram::closeInput() {
    if (input_ >= 0) {
        close(input_);
        input_ = -1;
    }
}

void RunningProgram::signal(int number) const {
    if (pid_ > 0) {
        kill(pid_, number);
    }
}

bool RunningProgram::isRunning() {
    if (pid_ > 0 && waitpid(pid_, &status_, WNOHANG) == pid_) {
        pid_ = -1;
    }
    return pid_ > 0;
}

int RunningProgram::waitForEnd() {
    if (!eventually([this] { return !isRunning(); })) {
        return -1;
    }
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
}

std::string RunningProgram::output() const {
    return TestSupport::contentOf(outputFile_);
}

std::string RunningProgram::error() const {
    return TestSupport::contentOf(errorFile_);
}
