#include "host/live/linux/RawTerminal.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace Host {

namespace {

// Application keypad, marked pastes, reports of focus.
constexpr std::string_view greeting = "\x1b=\x1b[?2004h\x1b[?1004h";
constexpr std::string_view parting = "\x1b[?1004l\x1b[?2004l\x1b>";

constexpr std::array errorSignals{SIGQUIT, SIGABRT, SIGSEGV, SIGBUS, SIGILL, SIGFPE};

// What a signal's handler can use.
termios before;
std::atomic<bool> isTaken = false;
std::atomic<int> output = -1;
std::array<char, 16> farewellText;
std::atomic<std::size_t> farewellSize = 0;

void writeAll(const char* text, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(output.load(), text, size);
        if (written < 0 && errno != EINTR) {
            return; // gone, or full: then it is not this that is missing
        }
        text += std::max<ssize_t>(written, 0);
        size -= static_cast<std::size_t>(std::max<ssize_t>(written, 0));
    }
}

void giveBack(int when) {
    if (isTaken.exchange(false)) {
        writeAll(farewellText.data(), farewellSize.load());
        writeAll(parting.data(), parting.size());
        tcsetattr(STDIN_FILENO, when, &before);
    }
}

void giveBackAndFail(int number) {
    giveBack(TCSANOW);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

RawTerminal::RawTerminal() : state_(Platform::success()) {
    if (tcgetattr(STDIN_FILENO, &before) != 0) {
        state_ = Platform::Fault{"terminal", 0, std::string("cannot be used for keys: ") + std::strerror(errno)};
        return;
    }
    output = open("/dev/tty", O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (output < 0) {
        output = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
    }
    farewellSize = 0;
    for (const int number : errorSignals) {
        struct sigaction former {};
        if (sigaction(number, nullptr, &former) == 0 && former.sa_handler == SIG_DFL) {
            std::signal(number, giveBackAndFail);
        }
    }
    enter();
}

RawTerminal::~RawTerminal() {
    leave();
    for (const int number : errorSignals) {
        struct sigaction current {};
        if (sigaction(number, nullptr, &current) == 0 && current.sa_handler == giveBackAndFail) {
            std::signal(number, SIG_DFL);
        }
    }
    if (const int open = output.exchange(-1); open >= 0) {
        close(open);
    }
}

void RawTerminal::enter() {
    if (!state_) {
        return;
    }
    termios raw = before;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | IEXTEN); // signals stay
    raw.c_iflag &= ~static_cast<tcflag_t>(IXON | ICRNL | INLCR | IGNCR | ISTRIP);
    raw.c_cc[VMIN] = 1;
    raw.c_cc[VTIME] = 0;
    raw.c_cc[VQUIT] = _POSIX_VDISABLE; // Control Backslash is a key
    const bool again = isTaken.exchange(true);
    tcsetattr(STDIN_FILENO, TCSANOW, &raw);
    write(greeting);
    if (again) {
        writeAll(farewellText.data(), farewellSize.load());
    }
    write(extra_);
}

void RawTerminal::leave() {
    giveBack(TCSAFLUSH);
}

void RawTerminal::write(std::string_view text) {
    writeAll(text.data(), text.size());
}

void RawTerminal::writeWithFarewell(std::string_view text, std::string_view farewell) {
    extra_ = text;
    farewellSize = std::min(farewell.size(), farewellText.size());
    std::copy_n(farewell.data(), farewellSize.load(), farewellText.data());
    write(text);
}

} // namespace Host
