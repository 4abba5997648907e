#include "platform/SafeFiles.h"

#include "platform/TemporaryName.h"

#include <system_error>

namespace Platform {

Outcome replaceFile(const std::filesystem::path& target, std::string_view content, Survives survives) {
    FileReplacement file(target);
    if (Outcome opened = file.open(); !opened) {
        return opened;
    }
    if (Outcome written = file.append(content); !written) {
        return written;
    }
    return file.commit(survives);
}

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
