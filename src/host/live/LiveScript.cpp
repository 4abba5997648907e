#include "host/live/LiveScript.h"

#include "core/Barrier.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "host/EventPoster.h"
#include "host/Performance.h"
#include "host/ScriptReader.h"
#include "host/live/LivePlayer.h"
#include "midiengine/MidiEngine.h"
#include "platform/Threads.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace Host {

using namespace std::chrono_literals;
using Backend::Ticks;
using Platform::Outcome;

namespace {

// How long before its tick an incoming message is handed in: time enough to reach the engine.
constexpr int aheadMilliseconds = 20;
// So that a script's first lines are in time, it begins a little later than it is read.
constexpr int headStartMilliseconds = 25;
// Waits for a tick are cut into pieces, since the tempo may change meanwhile.
constexpr std::chrono::nanoseconds longestWait = 20ms;
constexpr std::chrono::nanoseconds betweenLooks = 5ms;

std::int32_t ticksIn(int milliseconds, Tempo tempo) {
    return std::max(1, static_cast<std::int32_t>(tempo.beatsPerMinute() * 480 * milliseconds / 60'000));
}

std::chrono::nanoseconds timeFor(std::int32_t ticks, Tempo tempo) {
    return std::chrono::nanoseconds{std::int64_t{ticks} * 125'000'000'000 / tempo.thousandths};
}

// A line without its end; false at the end of the input. What is longer than any line may be is cut off there.
bool readLine(std::FILE* input, std::string& line) {
    line.clear();
    int byte = std::getc(input);
    if (byte == EOF) {
        return false;
    }
    for (; byte != EOF && byte != '\n'; byte = std::getc(input)) {
        if (line.size() <= longestScriptLine) {
            line.push_back(static_cast<char>(byte));
        }
    }
    return true;
}

} // namespace

// Shared with the reading thread. Player and backend are touched only under the mutex, and not once it has stopped.
struct LiveScript::Reading {
    Reading(std::FILE* file, LivePlayer& livePlayer, Backend::QelIF& backend, Platform::AutoResetEvent& end,
            Ticks scriptStart)
        : input(file), player(livePlayer), qel(backend), finished(end), start(scriptStart),
          reader("standard input", static_cast<int>(livePlayer.system().inputs().size())) {}

    void perform();
    // Reads and performs until the end; the fault of the first wrong line.
    [[nodiscard]] Outcome performLines();
    void goOnUntilSilent();
    // Waits until the tick has come, `ahead` milliseconds earlier; false when stopped.
    [[nodiscard]] bool waitFor(std::int32_t tick, int ahead);
    [[nodiscard]] bool pause(std::chrono::nanoseconds time);
    // Does something with player and backend, unless stopped: then false.
    template <typename Action> bool touch(Action action) {
        const std::lock_guard lock(mutex);
        if (!stopped) {
            action();
        }
        return !stopped;
    }
    void handIn(const PerformanceEvent& event);

    std::FILE* input;
    LivePlayer& player;
    Backend::QelIF& qel;
    Platform::AutoResetEvent& finished;
    Ticks start;
    ScriptReader reader;
    std::int32_t lastTick = 0;

    std::mutex mutex;
    bool stopped = false;
    std::optional<Outcome> outcome;
    Platform::AutoResetEvent stopping;
};

LiveScript::LiveScript(std::FILE* input, LivePlayer& player, Backend::QelIF& qel, Platform::AutoResetEvent& finished)
    : start_(player.now() + Ticks{1 + ticksIn(headStartMilliseconds, player.tempo())}),
      reading_(std::make_shared<Reading>(input, player, qel, finished, start_)) {
    std::thread([reading = reading_] {
        Platform::setCurrentThreadName("script");
        reading->perform();
    }).detach();
}

LiveScript::~LiveScript() {
    const std::lock_guard lock(reading_->mutex);
    reading_->stopped = true;
    reading_->stopping.signal();
}

std::optional<Outcome> LiveScript::outcome() const {
    const std::lock_guard lock(reading_->mutex);
    return reading_->outcome;
}

void LiveScript::Reading::perform() {
    Outcome performed = performLines();
    if (performed) {
        goOnUntilSilent();
    }
    touch([&] {
        outcome = std::move(performed);
        finished.signal();
    });
}

Outcome LiveScript::Reading::performLines() {
    for (std::string line; readLine(input, line);) {
        const auto read = reader.readLine(line);
        if (!read) {
            return read.fault();
        }
        if (!read.value()) {
            continue;
        }
        const PerformanceEvent& event = *read.value();
        lastTick = event.tick;
        if (std::holds_alternative<EndOfPerformance>(event.what)) {
            static_cast<void>(waitFor(event.tick, 0));
            lastTick = -tail; // nothing is waited for
            break;
        }
        const bool early = std::holds_alternative<MidiArrives>(event.what);
        if (!waitFor(event.tick, early ? aheadMilliseconds : 0) || !touch([&] { handIn(event); })) {
            break;
        }
    }
    return Platform::success();
}

void LiveScript::Reading::handIn(const PerformanceEvent& event) {
    postEvent(event, qel, start + Ticks{event.tick});
}

bool LiveScript::Reading::pause(std::chrono::nanoseconds time) {
    static_cast<void>(stopping.waitFor(time));
    return touch([] {});
}

bool LiveScript::Reading::waitFor(std::int32_t tick, int ahead) {
    for (;;) {
        std::chrono::nanoseconds wait{};
        if (!touch([&] {
                const Tempo tempo = player.tempo();
                const std::int32_t missing =
                    start.count + tick - player.now().count - (ahead > 0 ? ticksIn(ahead, tempo) : 0);
                wait = missing > 0 ? timeFor(missing, tempo) : 0ns;
            })) {
            return false;
        }
        if (wait <= 0ns) {
            return true;
        }
        if (!pause(std::min(wait, longestWait))) {
            return false;
        }
    }
}

void LiveScript::Reading::goOnUntilSilent() {
    // What was handed in last is in the engine before it is asked whether it is busy. The backend opens every barrier
    // that it has taken.
    Backend::Barrier barrier;
    bool posted = false;
    touch([&] { posted = qel.getQelMessageManager().postBarrier(barrier); });
    if (posted) {
        barrier.wait();
    }
    bool busy = true;
    while (busy &&
           touch([&] { busy = qel.getMidiEngine().isBusy() && player.now().count <= start.count + lastTick + tail; }) &&
           busy) {
        static_cast<void>(pause(betweenLooks));
    }
}

} // namespace Host
