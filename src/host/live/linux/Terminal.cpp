#include "host/live/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace Host {

bool standardInputIsTerminal() noexcept {
    return isatty(STDIN_FILENO) == 1;
}

bool standardOutputIsTerminal() noexcept {
    return isatty(STDOUT_FILENO) == 1;
}

bool standardErrorIsTerminal() noexcept {
    return isatty(STDERR_FILENO) == 1;
}

int terminalColumns() noexcept {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

std::string lineEraser() {
    return "\r\x1b[K";
}

} // namespace Host
