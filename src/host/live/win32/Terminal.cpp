#include "host/live/Terminal.h"

#include <initializer_list>
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

void enableEscapeSequences() noexcept {
    for (const DWORD which : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
        const HANDLE console = GetStdHandle(which);
        if (DWORD mode = 0; GetConsoleMode(console, &mode) != 0) {
            SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        }
    }
}

} // namespace Host
