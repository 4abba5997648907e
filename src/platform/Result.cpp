#include "platform/Result.h"

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
    return text + reason;
}

} // namespace Platform
