#include "platform/SafeFiles.h"

#include "platform/Clocks.h"
#include "platform/PathText.h"
#include "platform/TemporaryName.h"
#include "platform/win32/Handle.h"
#include "platform/win32/WideText.h"

#include <algorithm>

namespace Platform {

using namespace std::chrono_literals;

namespace {

// A new file of that name that can be read, moved and deleted while it is open, but not by who does not let others
// write: so it shows that its writer lives.
HANDLE createNewFile(const std::filesystem::path& name) {
    return CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Puts the content into the new file, down to the disk. 0 or the error number.
DWORD fillNewFile(const Handle& file, std::string_view content) {
    DWORD error = 0;
    while (error == 0 && !content.empty()) {
        const auto piece = static_cast<DWORD>(std::min<std::size_t>(content.size(), 1U << 30));
        DWORD written = 0;
        error = WriteFile(file.get(), content.data(), piece, &written, nullptr) != 0 ? 0 : GetLastError();
        content.remove_prefix(written);
    }
    if (error == 0 && FlushFileBuffers(file.get()) == 0) {
        error = GetLastError();
    }
    return error;
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

void removeIfAbandoned(const std::filesystem::path& leftover) {
    const Handle file(CreateFileW(leftover.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

Outcome replaceFile(const std::filesystem::path& givenTarget, std::string_view content) {
    const auto failed = [&givenTarget](DWORD error) { return Fault{textOf(givenTarget), 0, textOfSystemError(error)}; };
    const std::filesystem::path target = resolvedTarget(givenTarget);
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return failed(ERROR_ACCESS_DENIED); // not every system's move minds
    }
    const std::filesystem::path temporary = nameForReplacement(target);
    Handle file(createNewFile(temporary)); // open until the file has its name
    if (!file.isValid()) {
        return failed(GetLastError());
    }
    DWORD error = fillNewFile(file, content);
    error = error == 0 ? moveOver(temporary, target) : error;
    file.close();
    if (error != 0) {
        DeleteFileW(temporary.c_str());
        return failed(error);
    }
    removeLeftovers(target.has_parent_path() ? target.parent_path() : ".");
    return success();
}

Result<std::string> readWholeFile(const std::filesystem::path& path, std::size_t maxBytes) {
    const auto failed = [&path](DWORD error) { return Fault{textOf(path), 0, textOfSystemError(error)}; };
    // Not the standard streams: those keep others from replacing the file, and programs started meanwhile get the
    // open file as an inheritance.
    const Handle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isValid()) {
        return failed(GetLastError());
    }
    constexpr std::size_t piece = 256 * 1024;
    std::string content;
    for (std::size_t filled = 0;;) {
        content.resize(filled + piece);
        DWORD got = 0;
        if (ReadFile(file.get(), content.data() + filled, static_cast<DWORD>(piece), &got, nullptr) == 0) {
            return failed(GetLastError());
        }
        filled += got;
        if (filled > maxBytes) {
            return Fault{textOf(path), 0, "is bigger than " + std::to_string(maxBytes) + " bytes"};
        }
        if (got == 0) {
            content.resize(filled);
            return content;
        }
    }
}

struct FileLock::State {
    Handle file;
    bool isHeld = false;

    State(const std::filesystem::path& path, Patience patience)
        : file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr)) {
        // This kind of lock belongs to the handle, so that it also keeps out other holders of this process.
        const auto deadline = monotonicTime() + (patience == Patience::none ? 0ms : usualPatience);
        while (file.isValid() && !isHeld) {
            OVERLAPPED fromStart{};
            isHeld =
                LockFileEx(file.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &fromStart) != 0;
            const DWORD error = isHeld ? ERROR_SUCCESS : GetLastError();
            const bool mayPass = error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING;
            if (isHeld || !mayPass || monotonicTime() >= deadline) {
                break;
            }
            Sleep(1);
        }
    }
    ~State() {
        if (isHeld) {
            // Closing would free it, too, but at a time of the system's choice.
            OVERLAPPED fromStart{};
            UnlockFileEx(file.get(), 0, 1, 0, &fromStart);
        }
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
};

FileLock::FileLock(const std::filesystem::path& file, Patience patience)
    : state_(std::make_unique<State>(file, patience)) {}
FileLock::~FileLock() = default;
bool FileLock::isHeld() const noexcept {
    return state_->isHeld;
}

} // namespace Platform
