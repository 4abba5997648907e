#include "host/live/TerminalKeyboard.h"

#include "host/live/ConsoleKey.h"
#include "host/live/DownKeys.h"
#include "host/live/KeyPoster.h"
#include "platform/Threads.h"

#include <array>
#include <windows.h>

namespace Host {

namespace {

ConsoleKey consoleKey(const KEY_EVENT_RECORD& record) {
    const DWORD held = record.dwControlKeyState;
    const auto modifier = [held](DWORD keys, std::uint32_t which) { return (held & keys) != 0 ? which : 0U; };
    return {record.wVirtualKeyCode, record.wVirtualScanCode, (held & ENHANCED_KEY) != 0,
            modifier(SHIFT_PRESSED, Key::SHIFT) | modifier(LEFT_CTRL_PRESSED | RIGHT_CTRL_PRESSED, Key::CONTROL) |
                modifier(LEFT_ALT_PRESSED | RIGHT_ALT_PRESSED, Key::ALT)};
}

} // namespace

struct TerminalKeyboard::Playing {
    Playing(Backend::QelIF& backend, const LivePlayer& livePlayer)
        : qel(backend), player(livePlayer), console(GetStdHandle(STD_INPUT_HANDLE)),
          stop(CreateEventA(nullptr, TRUE, FALSE, nullptr)), state(Platform::success()) {}
    ~Playing() { CloseHandle(stop); }
    Playing(const Playing&) = delete;
    Playing& operator=(const Playing&) = delete;

    void run();
    void readKeys();
    void handle(const KEY_EVENT_RECORD& record);

    Backend::QelIF& qel;
    const LivePlayer& player;
    HANDLE console;
    HANDLE stop;
    DWORD modeBefore = 0;
    Platform::Outcome state;
    DownKeys down;
    std::unique_ptr<Platform::Thread> thread;
};

TerminalKeyboard::TerminalKeyboard(Backend::QelIF& qel, const LivePlayer& player)
    : playing_(std::make_unique<Playing>(qel, player)) {
    // Control C stays a signal; without quick editing a click does not stop the output.
    if (!GetConsoleMode(playing_->console, &playing_->modeBefore) ||
        !SetConsoleMode(playing_->console, ENABLE_PROCESSED_INPUT | ENABLE_EXTENDED_FLAGS)) {
        playing_->state = Platform::Fault{"console", 0, "cannot be used for keys"};
        return;
    }
    playing_->thread = std::make_unique<Platform::Thread>([playing = playing_.get()] {
        Platform::setCurrentThreadName("console keys");
        playing->run();
    });
    playing_->thread->resume();
}

TerminalKeyboard::~TerminalKeyboard() {
    if (playing_->thread) {
        SetEvent(playing_->stop);
        playing_->thread->join();
        FlushConsoleInputBuffer(playing_->console);
        SetConsoleMode(playing_->console, playing_->modeBefore | ENABLE_EXTENDED_FLAGS);
    }
}

const Platform::Outcome& TerminalKeyboard::state() const noexcept {
    return playing_->state;
}

void TerminalKeyboard::Playing::run() {
    const std::array<HANDLE, 2> sources{stop, console};
    while (WaitForMultipleObjects(static_cast<DWORD>(sources.size()), sources.data(), FALSE, INFINITE) ==
           WAIT_OBJECT_0 + 1) {
        readKeys();
    }
    postKeys(qel, down.liftAll());
    waitForSilence(qel, player); // before whoever ends the program ends what is left
}

void TerminalKeyboard::Playing::readKeys() {
    std::array<INPUT_RECORD, 64> records;
    DWORD size = 0;
    if (!ReadConsoleInputW(console, records.data(), static_cast<DWORD>(records.size()), &size)) {
        SetEvent(stop); // the console has gone
        return;
    }
    for (DWORD i = 0; i < size; ++i) {
        const INPUT_RECORD& record = records[i];
        if (record.EventType == KEY_EVENT) {
            handle(record.Event.KeyEvent);
        } else if (record.EventType == FOCUS_EVENT && !record.Event.FocusEvent.bSetFocus) {
            postKeys(qel, down.liftAll()); // releases go elsewhere
        }
    }
}

void TerminalKeyboard::Playing::handle(const KEY_EVENT_RECORD& record) {
    const Key key = keyOf(consoleKey(record));
    if (key == Key()) {
        return;
    }
    if (const auto event = down.admit({key, record.bKeyDown ? Press::down : Press::up})) {
        postKeys(qel, {*event});
    }
}

} // namespace Host
