#include "platform/FileReplacement.h"

#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/TemporaryName.h"
#include "platform/win32/Handle.h"
#include "platform/win32/WideText.h"

#include <algorithm>
#include <optional>

namespace Platform {

namespace {

// A new file of that name that can be read, moved and deleted while it is open, but not by who does not let others
// write: so it shows that its writer lives.
HANDLE createNewFile(const std::filesystem::path& name) {
    return CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Programs that look at every new file hold one open for moments: tried again for about a second.
DWORD moveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    DWORD error = 0;
    for (int tries = 0; tries < 100; ++tries) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) {
            return 0;
        }
        error = GetLastError();
        const DWORD attributes = GetFileAttributesW(to.c_str());
        const bool mayPass = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
        const bool neverPasses = attributes != INVALID_FILE_ATTRIBUTES &&
                                 (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0;
        if (!mayPass || neverPasses) {
            return error;
        }
        Sleep(10);
    }
    return error;
}

} // namespace

struct FileReplacement::State {
    explicit State(const std::filesystem::path& path) : given(path), target(resolvedTarget(path)) {}

    std::filesystem::path given;
    std::filesystem::path target;
    std::filesystem::path written;
    std::optional<Handle> file; // open until the file has its name

    [[nodiscard]] Outcome outcomeOf(DWORD error) const {
        return error == 0 ? success() : Outcome(Fault{textOf(given), 0, textOfSystemError(error)});
    }
};

FileReplacement::FileReplacement(const std::filesystem::path& target) : state_(std::make_unique<State>(target)) {}

FileReplacement::~FileReplacement() {
    if (state_->file && state_->file->isValid()) {
        state_->file->close();
        DeleteFileW(state_->written.c_str());
    }
}

Outcome FileReplacement::open() {
    const DWORD attributes = GetFileAttributesW(state_->target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return state_->outcomeOf(ERROR_ACCESS_DENIED); // not every system's move minds
    }
    state_->written = nameForReplacement(state_->target);
    state_->file.emplace(createNewFile(state_->written));
    return state_->outcomeOf(state_->file->isValid() ? 0 : GetLastError());
}

Outcome FileReplacement::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1U << 30));
        DWORD count = 0;
        if (WriteFile(state_->file->get(), bytes.data(), piece, &count, nullptr) == 0) {
            return state_->outcomeOf(GetLastError());
        }
        bytes.remove_prefix(count);
    }
    return success();
}

Outcome FileReplacement::commit(Survives survives) {
    if (survives == Survives::system && FlushFileBuffers(state_->file->get()) == 0) {
        return state_->outcomeOf(GetLastError());
    }
    if (const DWORD error = moveOver(state_->written, state_->target); error != 0) {
        return state_->outcomeOf(error);
    }
    state_->file->close();
    removeLeftovers(state_->target.has_parent_path() ? state_->target.parent_path() : ".");
    return success();
}

} // namespace Platform
