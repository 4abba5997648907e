// The options that all verbs with a backend share.
#pragma once

#include "host/Session.h"

#include <CLI/CLI.hpp>

namespace Host {

// Adds --program, --bank, --slot, --tempo and --data, which fill `options`; it lives as long as the verb.
void addSessionOptions(CLI::App& verb, SessionOptions& options);

} // namespace Host
