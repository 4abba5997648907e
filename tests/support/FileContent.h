// Files as text, for tests.
#pragma once

#include "platform/SafeFiles.h"

#include <filesystem>
#include <string>

namespace TestSupport {

// The whole content, or "fault: " and why there is none.
inline std::string contentOf(const std::filesystem::path& file) {
    const auto content = Platform::readWholeFile(file, 100'000'000);
    return content ? content.value() : "fault: " + content.fault().text();
}

} // namespace TestSupport
