#include "platform/SafeFiles.h"

#include "platform/TemporaryName.h"

#include <system_error>

namespace Platform {

void removeLeftovers(const std::filesystem::path& folder) {
    std::error_code failure;
    for (std::filesystem::directory_iterator each(folder, failure), end; !failure && each != end;
         each.increment(failure)) {
        std::error_code ignored;
        if (isNameForReplacement(each->path()) && std::filesystem::is_regular_file(each->symlink_status(ignored))) {
            removeIfAbandoned(each->path());
        }
    }
}

} // namespace Platform
