// The system's slim reader-writer lock, held for a scope.
#pragma once

#include <windows.h>

namespace Platform {

class SharedGuard final {
public:
    explicit SharedGuard(SRWLOCK& lock) noexcept : lock_(lock) { AcquireSRWLockShared(&lock_); }
    ~SharedGuard() { ReleaseSRWLockShared(&lock_); }
    SharedGuard(const SharedGuard&) = delete;
    SharedGuard& operator=(const SharedGuard&) = delete;

private:
    SRWLOCK& lock_;
};

class ExclusiveGuard final {
public:
    explicit ExclusiveGuard(SRWLOCK& lock) noexcept : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
    ~ExclusiveGuard() { ReleaseSRWLockExclusive(&lock_); }
    ExclusiveGuard(const ExclusiveGuard&) = delete;
    ExclusiveGuard& operator=(const ExclusiveGuard&) = delete;

private:
    SRWLOCK& lock_;
};

} // namespace Platform
