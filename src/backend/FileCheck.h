// Says what is wrong with a file of any of our kinds.
#pragma once

#include "platform/Result.h"
#include "values/ElementFormat.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace Backend {

// A kind of file: its extension and what it may begin with.
struct FileKind {
    std::string_view extension;
    std::vector<const ElementFormat*> roots;
};

// Programs, banks, presets, sequences.
[[nodiscard]] const std::vector<FileKind>& fileKinds();

// Every fault of a file, with line and reason; none when it is fine. A file of another extension may be of any kind.
// Presets that it names are looked for in the folders beside its own when that is one of the application's, else in
// those of `applicationData`; "000 - Default" is always there. [any]
[[nodiscard]] std::vector<Platform::Fault> checkFile(const std::filesystem::path& file,
                                                     const std::filesystem::path& applicationData);

} // namespace Backend
