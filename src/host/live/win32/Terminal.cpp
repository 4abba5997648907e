#include "host/live/Terminal.h"

#include <io.h>
#include <stdio.h>

namespace Host {

bool standardInputIsTerminal() noexcept {
    return _isatty(_fileno(stdin)) != 0;
}

bool standardErrorIsTerminal() noexcept {
    return _isatty(_fileno(stderr)) != 0;
}

} // namespace Host
