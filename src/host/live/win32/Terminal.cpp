#include "host/live/Terminal.h"

#include <windows.h>

namespace Host {

namespace {

// What the library calls a terminal is any device of characters, NUL among them.
bool isConsole(DWORD stream) noexcept {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

} // namespace

bool standardInputIsTerminal() noexcept {
    return isConsole(STD_INPUT_HANDLE);
}

bool standardOutputIsTerminal() noexcept {
    return isConsole(STD_OUTPUT_HANDLE);
}

bool standardErrorIsTerminal() noexcept {
    return isConsole(STD_ERROR_HANDLE);
}

int terminalColumns() noexcept {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool known = GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != 0;
    const int columns = info.srWindow.Right - info.srWindow.Left + 1;
    return known && columns > 1 ? columns : 80;
}

// Not every console obeys escape sequences.
std::string lineEraser() {
    return "\r" + std::string(static_cast<std::size_t>(terminalColumns() - 1), ' ') + "\r";
}

} // namespace Host
