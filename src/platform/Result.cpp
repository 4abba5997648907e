#include "platform/Result.h"

#include "platform/Utf8.h"

namespace Platform {

std::string Fault::text() const {
    std::string text = file;
    if (line > 0) {
        text += text.empty() ? "line " : ":";
        text += std::to_string(line);
    }
    if (!text.empty() && !reason.empty()) {
        text += ": ";
    }
    return withoutControls(text + reason);
}

} // namespace Platform
