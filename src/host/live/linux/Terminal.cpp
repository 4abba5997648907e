#include "host/live/Terminal.h"

#include <unistd.h>

namespace Host {

bool standardInputIsTerminal() noexcept {
    return isatty(STDIN_FILENO) == 1;
}

bool standardErrorIsTerminal() noexcept {
    return isatty(STDERR_FILENO) == 1;
}

} // namespace Host
