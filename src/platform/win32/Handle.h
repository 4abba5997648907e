// A kernel object's handle that is closed with its owner.
#pragma once

#include <utility>
#include <windows.h>

namespace Platform {

class Handle final {
public:
    explicit Handle(HANDLE handle = nullptr) noexcept : handle_(handle) {}
    ~Handle() { close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    [[nodiscard]] HANDLE get() const noexcept { return handle_; }
    [[nodiscard]] bool isValid() const noexcept { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
    bool close() noexcept {
        const bool wasValid = isValid();
        const HANDLE handle = std::exchange(handle_, nullptr);
        return !wasValid || CloseHandle(handle) != 0;
    }

private:
    HANDLE handle_;
};

} // namespace Platform
