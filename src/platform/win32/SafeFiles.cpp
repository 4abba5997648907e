#include "platform/SafeFiles.h"

#include "platform/Clocks.h"
#include "platform/PathText.h"
#include "platform/win32/Handle.h"
#include "platform/win32/WideText.h"

namespace Platform {

using namespace std::chrono_literals;

void removeIfAbandoned(const std::filesystem::path& leftover) {
    const Handle file(CreateFileW(leftover.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

Result<std::string> readWholeFile(const std::filesystem::path& path, std::size_t maxBytes, Waiting) {
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
