// Reading a file into memory.
#pragma once

#include "platform/Result.h"

#include <string>

namespace Host {

// The whole content; a folder, a file that cannot be read and one of more than a GiB are faults. Pipes and devices are
// read to their end.
[[nodiscard]] Platform::Result<std::string> readWholeFile(const std::string& file);

} // namespace Host
