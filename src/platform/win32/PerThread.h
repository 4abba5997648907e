// One T for each thread that asks, destroyed when the thread ends.
#pragma once

#include <memory>
#include <new>
#include <windows.h>

namespace Platform {

// In place of thread_local for types with a destructor: mingw frees the memory of thread_local objects before it runs
// their destructors. Deliberately never ended: giving the slot back would destroy the objects of running threads.
template <typename T> class PerThread final {
public:
    PerThread() : slot_(FlsAlloc(&PerThread::destroy)) {
        if (slot_ == FLS_OUT_OF_INDEXES) {
            throw std::bad_alloc();
        }
    }
    PerThread(const PerThread&) = delete;
    PerThread& operator=(const PerThread&) = delete;

    // The calling thread's own. [any]
    T& own() {
        if (void* const made = FlsGetValue(slot_)) {
            return *static_cast<T*>(made);
        }
        auto fresh = std::make_unique<T>();
        if (FlsSetValue(slot_, fresh.get()) == 0) {
            throw std::bad_alloc();
        }
        return *fresh.release();
    }

private:
    static void WINAPI destroy(void* object) { delete static_cast<T*>(object); }

    DWORD slot_;
};

} // namespace Platform
