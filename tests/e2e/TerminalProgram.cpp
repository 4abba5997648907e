#include "e2e/TerminalProgram.h"

#include "e2e/RunningProgram.h"

#include <array>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

TerminalProgram::TerminalProgram(const std::string& program, std::vector<std::string> arguments, bool simulatesKitty)
    : simulatesKitty_(simulatesKitty), terminal_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    std::array<char, 128> name{};
    if (terminal_ < 0 || grantpt(terminal_) != 0 || unlockpt(terminal_) != 0 ||
        ptsname_r(terminal_, name.data(), name.size()) != 0) {
        throw std::runtime_error("no terminal");
    }
    line_ = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    const winsize size{24, 200, 0, 0};
    ioctl(line_, TIOCSWINSZ, &size);
    tcgetattr(line_, &before_);

    // The first terminal that the leader of a new session opens is its own.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, name.data(), O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    arguments.insert(arguments.begin(), program);
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    if (posix_spawnp(&pid_, program.c_str(), &actions, &attributes, argv.data(), environ) != 0) {
        pid_ = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    reader_ = std::thread([this] { readAndAnswer(); });
}

TerminalProgram::~TerminalProgram() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, &status_, 0);
    }
    closeTerminal();
}

void TerminalProgram::readAndAnswer() {
    const std::string question = "\x1b[?u";
    const std::string request = "\x1b[>15u";
    std::size_t answered = 0;
    std::array<char, 4096> block{};
    while (!ending_) {
        pollfd waiting{terminal_, POLLIN, 0};
        const ssize_t got = poll(&waiting, 1, 50) > 0 ? read(terminal_, block.data(), block.size()) : 0;
        const std::lock_guard lock(mutex_);
        text_.append(block.data(), static_cast<std::size_t>(got > 0 ? got : 0));
        if (simulatesKitty_) {
            for (auto at = text_.find(question, answered); at != text_.npos; at = text_.find(question, answered)) {
                type(text_.find(request) < at ? "\x1b[?15u" : "\x1b[?0u");
                answered = at + question.size();
            }
        }
    }
}

void TerminalProgram::type(const std::string& bytes) const {
    if (write(terminal_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("the terminal takes nothing");
    }
}

void TerminalProgram::closeTerminal() {
    ending_ = true;
    if (reader_.joinable()) {
        reader_.join();
    }
    for (int* const end : {&line_, &terminal_}) {
        if (*end >= 0) {
            close(*end);
            *end = -1;
        }
    }
}

int TerminalProgram::waitForEnd() {
    const auto hasEnded = [this] {
        if (pid_ > 0 && waitpid(pid_, &status_, WNOHANG) == pid_) {
            pid_ = -1;
        }
        return pid_ < 0;
    };
    if (!eventually(hasEnded)) {
        return -1;
    }
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
}

std::string TerminalProgram::text() const {
    const std::lock_guard lock(mutex_);
    return text_;
}

std::string TerminalProgram::statusLine() const {
    const std::string all = text();
    const std::string eraser = "\r\x1b[K";
    const auto at = all.rfind(eraser);
    return at == all.npos ? "" : all.substr(at + eraser.size());
}

bool TerminalProgram::isAsBefore() const {
    termios now{};
    return tcgetattr(line_, &now) == 0 && now.c_iflag == before_.c_iflag && now.c_oflag == before_.c_oflag &&
           now.c_cflag == before_.c_cflag && now.c_lflag == before_.c_lflag &&
           std::memcmp(now.c_cc, before_.c_cc, sizeof now.c_cc) == 0;
}
