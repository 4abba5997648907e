#include "host/live/TerminalKeyboard.h"

#include "host/live/KeyPoster.h"
#include "host/live/TerminalKeys.h"
#include "host/live/linux/RawTerminal.h"
#include "platform/Threads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace Host {

namespace {

using Time = TerminalKeys::Time;

Time currentTime() {
    return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch());
}

// What is to be done besides the keys: one letter each, written into a pipe that is read with them.
constexpr char suspendOrder = 's';
constexpr char resumeOrder = 'r';
constexpr char endOrder = 'e';

// Signal handlers know nothing else.
std::atomic<int> orders = -1;

void order(char letter) {
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(orders.load(), &letter, 1);
    errno = error;
}

// While it lives, the signals of job control become orders.
class TerminalSignals final {
public:
    explicit TerminalSignals(int pipe) {
        orders = pipe;
        handle(SIGTSTP, [](int) { order(suspendOrder); });
        handle(SIGCONT, [](int) { order(resumeOrder); });
    }
    ~TerminalSignals() {
        for (const int number : {SIGTSTP, SIGCONT}) {
            std::signal(number, SIG_DFL);
        }
        orders = -1;
    }
    TerminalSignals(const TerminalSignals&) = delete;
    TerminalSignals& operator=(const TerminalSignals&) = delete;

private:
    static void handle(int number, void (*handler)(int)) {
        struct sigaction action {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
};

} // namespace

struct TerminalKeyboard::Playing {
    Playing(Backend::QelIF& backend, const LivePlayer& livePlayer) : qel(backend), player(livePlayer) {}

    void run();
    [[nodiscard]] int waitTime() const;
    void readKeys();
    void obeyOrders();
    void suspend();
    void act(const TerminalKeys::Result& result);

    Backend::QelIF& qel;
    const LivePlayer& player;
    RawTerminal terminal;
    TerminalKeys keys;
    std::array<int, 2> pipe{-1, -1};
    bool isOver = false;
    std::unique_ptr<TerminalSignals> signals;
    std::unique_ptr<Platform::Thread> thread;
};

TerminalKeyboard::TerminalKeyboard(Backend::QelIF& qel, const LivePlayer& player)
    : playing_(std::make_unique<Playing>(qel, player)) {
    if (!state() || pipe2(playing_->pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    playing_->signals = std::make_unique<TerminalSignals>(playing_->pipe[1]);
    playing_->terminal.write(TerminalKeys::question);
    playing_->thread = std::make_unique<Platform::Thread>([playing = playing_.get()] {
        Platform::setCurrentThreadName("terminal keys");
        playing->run();
    });
    playing_->thread->resume();
}

TerminalKeyboard::~TerminalKeyboard() {
    if (playing_->thread) {
        order(endOrder);
        playing_->thread->join();
        playing_->signals.reset();
        close(playing_->pipe[0]);
        close(playing_->pipe[1]);
    }
}

const Platform::Outcome& TerminalKeyboard::state() const noexcept {
    return playing_->terminal.state();
}

void TerminalKeyboard::Playing::run() {
    while (!isOver) {
        std::array<pollfd, 2> sources{{{pipe[0], POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
        const int ready = poll(sources.data(), sources.size(), waitTime());
        act(keys.passTime(currentTime()));
        if (ready > 0 && sources[0].revents != 0) {
            obeyOrders();
        } else if (ready > 0 && sources[1].revents != 0) {
            readKeys();
        }
    }
    act(keys.liftAll());
    waitForSilence(qel, player); // before whoever ends the program ends what is left
}

// In milliseconds; -1: for ever.
int TerminalKeyboard::Playing::waitTime() const {
    const auto deadline = keys.deadline();
    return deadline ? static_cast<int>(std::max<Time::rep>((*deadline - currentTime()).count(), 0)) : -1;
}

void TerminalKeyboard::Playing::readKeys() {
    std::array<std::uint8_t, 1024> bytes;
    const ssize_t size = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (size > 0) {
        act(keys.take({bytes.data(), static_cast<std::size_t>(size)}, currentTime()));
    } else if (size == 0 || (errno != EINTR && errno != EAGAIN)) {
        isOver = true; // the terminal has gone
        static_cast<void>(std::raise(SIGTERM));
    }
}

void TerminalKeyboard::Playing::obeyOrders() {
    char letter = 0;
    while (!isOver && read(pipe[0], &letter, 1) == 1) {
        if (letter == suspendOrder) {
            suspend();
        } else if (letter == resumeOrder) {
            terminal.enter();
        } else {
            isOver = true;
        }
    }
}

void TerminalKeyboard::Playing::suspend() {
    act(keys.liftAll());
    waitForSilence(qel, player);
    terminal.leave();
    static_cast<void>(kill(getpid(), SIGSTOP)); // goes on here; SIGCONT then orders the rest
}

void TerminalKeyboard::Playing::act(const TerminalKeys::Result& result) {
    postKeys(qel, result.keys);
    if (result.request) {
        terminal.writeWithFarewell(TerminalKeys::request, TerminalKeys::farewell);
    }
    if (result.suspend) {
        static_cast<void>(std::raise(SIGTSTP));
    }
    if (result.end) {
        static_cast<void>(std::raise(SIGINT));
    }
}

} // namespace Host
