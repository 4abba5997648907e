#include "platform/StandardStreams.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>

namespace Platform {

void prepareStandardStreams() {
    (void)_setmode(_fileno(stdout), _O_BINARY);
}

} // namespace Platform
