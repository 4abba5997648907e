#include "platform/Threads.h"

#include "platform/Clocks.h"
#include "platform/win32/Handle.h"
#include "platform/win32/WideText.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <process.h>
#include <system_error>

namespace Platform {

struct Thread::State {
    std::function<void()> body;
    ThreadId id = 0;
    bool isResumed = false;
    bool isDiscarded = false; // read by the thread once it runs
    Handle handle;            // last: creating the thread writes the id

    explicit State(std::function<void()> itsBody) : body(std::move(itsBody)), handle(create(this)) {}

    static unsigned __stdcall run(void* argument) {
        static_cast<State*>(argument)->run();
        return 0;
    }
    void run() noexcept {
        if (!isDiscarded) {
            body();
        }
        body = {};
    }
    HANDLE create(State* state) {
        const std::uintptr_t made = _beginthreadex(nullptr, 0, &State::run, state, CREATE_SUSPENDED, &id);
        if (made == 0) {
            throw std::system_error(errno, std::generic_category());
        }
        return reinterpret_cast<HANDLE>(made);
    }
    void end() {
        if (handle.isValid()) {
            assert(id != GetCurrentThreadId());
            WaitForSingleObject(handle.get(), INFINITE);
            handle.close();
        }
    }
};

Thread::Thread(std::function<void()> body) : state_(std::make_unique<State>(std::move(body))) {}

Thread::~Thread() {
    if (!state_->isResumed) {
        state_->isDiscarded = true;
        ResumeThread(state_->handle.get());
    }
    state_->end();
}

ThreadId Thread::id() const noexcept {
    return state_->id;
}

void Thread::resume() {
    assert(!state_->isResumed);
    state_->isResumed = true;
    ResumeThread(state_->handle.get());
}

void Thread::join() {
    if (state_->isResumed) {
        state_->end();
    }
}

ThreadId currentThreadId() noexcept {
    return GetCurrentThreadId();
}

void sleepMilliseconds(unsigned milliseconds) noexcept {
    if (milliseconds == 0) {
        Sleep(0);
        return;
    }
    // Sleep may return up to a timer tick early.
    const auto end = monotonicTime() + std::chrono::milliseconds(milliseconds);
    for (auto now = monotonicTime(); now < end; now = monotonicTime()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now).count();
        Sleep(static_cast<DWORD>(std::min<std::int64_t>(left, INFINITE - 1)));
    }
}

bool setCurrentThreadPriority(Priority priority) noexcept {
    const int level = priority == Priority::clock     ? THREAD_PRIORITY_TIME_CRITICAL
                      : priority == Priority::message ? THREAD_PRIORITY_HIGHEST
                                                      : THREAD_PRIORITY_NORMAL;
    return SetThreadPriority(GetCurrentThread(), level) != 0;
}

void setCurrentThreadName(const char* name) noexcept {
    // Not on every Windows that we run on: looked up.
    using SetDescription = HRESULT(WINAPI*)(HANDLE, PCWSTR);
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    const auto found = kernel != nullptr ? GetProcAddress(kernel, "SetThreadDescription") : nullptr;
    if (found != nullptr) {
        const auto set = reinterpret_cast<SetDescription>(reinterpret_cast<void*>(found));
        set(GetCurrentThread(), wideOf(std::string_view(name).substr(0, 15)).c_str());
    }
}

} // namespace Platform
