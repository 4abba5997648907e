#include "platform/ChangeLock.h"

#include "platform/win32/Handle.h"

namespace Platform {

struct ChangeLock::State {
    explicit State(HANDLE opened) : file(opened) {}
    Handle file; // goes with its handle, also when the process is killed
};

void ChangeLock::take() {
    const HANDLE opened =
        CreateFileW(file_.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                    FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (opened != INVALID_HANDLE_VALUE) {
        holder_ = Holder::us;
        state_ = std::make_shared<State>(opened);
        return;
    }
    DWORD error = GetLastError();
    if (error == ERROR_ACCESS_DENIED && GetFileAttributesW(file_.c_str()) == INVALID_FILE_ATTRIBUTES &&
        GetLastError() == ERROR_ACCESS_DENIED) {
        error = ERROR_SHARING_VIOLATION; // it is about to go
    }
    holder_ = error == ERROR_SHARING_VIOLATION ? Holder::another : Holder::nobody;
}

ChangeLock::~ChangeLock() = default;

} // namespace Platform
