#include "platform/Threads.h"

#include "platform/AutoResetEvent.h"
#include "platform/Clocks.h"
#include "platform/linux/QueueTable.h"
#include "platform/linux/RealtimeKit.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <system_error>
#include <thread>

namespace Platform {
namespace {

constinit ThreadQueues allThreadQueues;

// The id of a thread, which lasts as long as the thread and takes its queue along.
struct OwnId {
    ThreadId id = 0;

    constexpr OwnId() = default;
    ~OwnId() {
        if (id != 0) {
            allThreadQueues.release(id);
            id = 0;
        }
    }
    OwnId(const OwnId&) = delete;
    OwnId& operator=(const OwnId&) = delete;
};
thread_local constinit OwnId ownId;

constexpr int clockUrgency = 60;
constexpr int messageUrgency = 55;

bool askFor(int policy, int urgency) noexcept {
    sched_param parameters{};
    parameters.sched_priority = urgency;
    // What a real-time thread starts (another thread, a program) is not real-time on its own account.
    return sched_setscheduler(0, policy | SCHED_RESET_ON_FORK, &parameters) == 0;
}

} // namespace

ThreadQueues& threadQueues() noexcept {
    return allThreadQueues;
}

struct Thread::State {
    std::function<void()> body;
    ThreadId id = 0;
    AutoResetEvent gate;
    bool isResumed = false;
    bool isDiscarded = false; // read by the thread after the gate
    std::thread thread;

    void run() noexcept {
        ownId.id = id;
        gate.wait();
        if (!isDiscarded) {
            body();
        }
        body = {}; // what the body holds goes before the thread's id does
    }
    void end() {
        if (thread.joinable()) {
            assert(thread.get_id() != std::this_thread::get_id());
            thread.join();
        }
    }
};

Thread::Thread(std::function<void()> body) : state_(std::make_unique<State>()) {
    state_->body = std::move(body);
    state_->id = allThreadQueues.acquire();
    if (state_->id == 0) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    }
    try {
        state_->thread = std::thread([state = state_.get()] { state->run(); });
    } catch (...) {
        allThreadQueues.release(state_->id);
        throw;
    }
}

Thread::~Thread() {
    if (!state_->isResumed) {
        state_->isDiscarded = true;
        state_->gate.signal();
    }
    state_->end();
}

ThreadId Thread::id() const noexcept {
    return state_->id;
}

void Thread::resume() {
    assert(!state_->isResumed);
    state_->isResumed = true;
    state_->gate.signal();
}

void Thread::join() {
    if (state_->isResumed) {
        state_->end();
    }
}

ThreadId currentThreadId() noexcept {
    if (ownId.id == 0) {
        ownId.id = allThreadQueues.acquire();
    }
    return ownId.id;
}

void sleepMilliseconds(unsigned milliseconds) noexcept {
    if (milliseconds == 0) {
        sched_yield();
        return;
    }
    const auto end = monotonicTime() + std::chrono::milliseconds(milliseconds);
    timespec until{};
    until.tv_sec = static_cast<time_t>(end.count() / 1'000'000'000);
    until.tv_nsec = static_cast<long>(end.count() % 1'000'000'000);
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
}

bool setCurrentThreadPriority(Priority priority) noexcept {
    if (priority == Priority::normal) {
        return askFor(SCHED_OTHER, 0);
    }
    const int wanted = priority == Priority::clock ? clockUrgency : messageUrgency;
    if (askFor(SCHED_FIFO, wanted)) {
        return true;
    }
    // The user's limit may allow less than the full urgency: take what it allows, in the same order.
    rlimit limit{};
    if (getrlimit(RLIMIT_RTPRIO, &limit) == 0 && limit.rlim_cur < clockUrgency) {
        const int allowed = static_cast<int>(limit.rlim_cur) - (priority == Priority::clock ? 0 : 1);
        if (allowed > 0 && askFor(SCHED_FIFO, std::min(allowed, wanted))) {
            return true;
        }
    }
    // The clock has little to do at a time; the others may have a large file to read, which the limit that comes with
    // real-time priority from this service would not forgive.
    return priority == Priority::clock ? askForRealtime(clockUrgency) : askForHighPriority();
}

void setCurrentThreadName(const char* name) noexcept {
    char kept[16] = {};
    std::strncpy(kept, name, sizeof(kept) - 1);
    pthread_setname_np(pthread_self(), kept);
}

} // namespace Platform
