// Standard input, output and error of a program on the command line.
#pragma once

namespace Platform {

// Lets standard output carry bytes unchanged, and lets writing to a pipe that nobody reads fail instead of ending the
// program. Once, before anything is written. [main]
void prepareStandardStreams();

} // namespace Platform
