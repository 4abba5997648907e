#include "platform/StandardStreams.h"

#include <csignal>

namespace Platform {

void prepareStandardStreams() {
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace Platform
