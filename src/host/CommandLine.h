// The command line of the program.
#pragma once

namespace Host {

// Does what the arguments say and gives the exit code: 0 done, 1 the work failed, 2 wrong usage; on failure standard
// error has one line. [main]
[[nodiscard]] int runCommandLine(int argc, const char* const* argv);

} // namespace Host
