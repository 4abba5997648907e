#include "host/live/Terminal.h"

#include <io.h>
#include <stdio.h>
#include <windows.h>

namespace Host {

bool standardInputIsTerminal() noexcept {
    return _isatty(_fileno(stdin)) != 0;
}

bool standardOutputIsTerminal() noexcept {
    return _isatty(_fileno(stdout)) != 0;
}

bool standardErrorIsTerminal() noexcept {
    return _isatty(_fileno(stderr)) != 0;
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
