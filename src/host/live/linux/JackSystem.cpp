#include "host/live/linux/JackSystem.h"

#include "host/live/PeriodClock.h"
#include "host/live/linux/AbandonableThread.h"
#include "host/live/linux/JackPorts.h"
#include "platform/Clocks.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace Host {

using namespace std::chrono_literals;

namespace {

// A server that has let nobody play for so long is not waited for at the end.
constexpr std::chrono::nanoseconds silencePatience = 500ms;
constexpr std::chrono::nanoseconds betweenGlances = 20ms;
// Farther than this from the clock, a frame cannot be told apart from one of another server.
constexpr std::int32_t plausibleTicks = 5000;

} // namespace

JackSystem::JackSystem(std::shared_ptr<JackPorts> ports) : ports_(std::move(ports)) {}

JackSystem::~JackSystem() {
    stop();
}

Platform::Result<std::unique_ptr<JackSystem>> JackSystem::open(const PortWishes& wishes,
                                                               std::chrono::nanoseconds patience) {
    struct Opening {
        std::shared_ptr<JackPorts> ports;
        std::optional<Platform::Result<bool>> isOpen;
    };
    const auto opening = std::make_shared<Opening>();
    opening->ports = std::make_shared<JackPorts>(wishes);
    AbandonableThread opener([opening] { opening->isOpen = opening->ports->open(); });
    const JackProcess& process = opening->ports->process();
    for (std::uint32_t period = process.periods(); !opener.isDoneWithin(patience); period = process.periods()) {
        if (process.periods() == period) {
            return std::unique_ptr<JackSystem>{}; // it hangs: one that is slow lets us play meanwhile
        }
    }
    if (!*opening->isOpen) {
        return opening->isOpen->fault();
    }
    return opening->isOpen->value() ? std::unique_ptr<JackSystem>(new JackSystem(std::move(opening->ports))) : nullptr;
}

std::unique_ptr<Clock> JackSystem::createClock(ClockedEngine& engine) {
    auto clock = std::make_unique<PeriodClock>(engine);
    clock_.store(clock.get());
    ports_->process().setClock(clock.get());
    return clock;
}

void JackSystem::start(MidiSystemListener& listener) {
    listener_ = &listener;
    ports_->tell(&listener);
    watcher_ = std::make_unique<AbandonableThread>([ports = ports_] {
        Platform::setCurrentThreadName("ports");
        ports->watch();
    });
    inputThread_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("midi-in");
        static_cast<void>(Platform::setCurrentThreadPriority(Platform::Priority::message));
        handOn();
    });
    inputThread_->resume();
}

void JackSystem::stop() {
    if (stopping_.exchange(true)) {
        return;
    }
    JackProcess& process = ports_->process();
    process.arrivalEvent().signal();
    inputThread_.reset();
    ports_->end();
    if (!watcher_) { // never started
        watcher_ = std::make_unique<AbandonableThread>([ports = ports_] { ports->watch(); });
    }
    std::uint32_t period = process.periods();
    auto patientUntil = Platform::monotonicTime() + silencePatience;
    while (!watcher_->isDoneWithin(betweenGlances) && Platform::monotonicTime() < patientUntil) {
        if (const std::uint32_t now = process.periods(); now != period) {
            period = now;
            patientUntil = Platform::monotonicTime() + silencePatience;
        }
    }
    ports_->tell(nullptr);
    process.setClock(nullptr);
}

void JackSystem::handOn() {
    JackProcess& process = ports_->process();
    std::vector<JackProcess::Arrived> batch;
    while (!stopping_.load()) {
        process.arrivalEvent().wait();
        batch.clear();
        for (JackProcess::Arrived arrived; process.takeArrived(arrived);) {
            batch.push_back(arrived);
        }
        std::stable_sort(batch.begin(), batch.end(), [](const auto& a, const auto& b) { return a.frame < b.frame; });
        if (batch.empty()) {
            continue;
        }
        std::vector<Backend::MidiEngine::QelMidiMessage> messages;
        messages.reserve(batch.size());
        for (const JackProcess::Arrived& arrived : batch) {
            messages.push_back(toMessage(arrived.bytes, arrived.place, tickOf(arrived.frame), arrived.frame));
        }
        PeriodClock* const clock = clock_.load();
        listener_->received(
            std::move(messages), clock == nullptr ? std::function<void()>{} : [clock, frame = batch.back().frame] {
                clock->arrivalsTaken(frame);
            });
    }
}

Backend::Ticks JackSystem::tickOf(std::int64_t frame) const {
    const PeriodClock* const clock = clock_.load();
    if (clock == nullptr) {
        return Backend::noTicks;
    }
    const Backend::Ticks tick = clock->tickAt(frame);
    return std::abs(tick.count - clock->now().count) > plausibleTicks ? Backend::noTicks : tick;
}

std::vector<Backend::MidiInputPort> JackSystem::inputs() const {
    return ports_->lists().inputs();
}

std::vector<Backend::MidiOutputPort> JackSystem::outputs() const {
    return ports_->lists().outputs();
}

void JackSystem::enableInput(int place, bool on) {
    ports_->enable(PortDirection::in, place, on);
}

void JackSystem::enableOutput(int place, bool on) {
    ports_->enable(PortDirection::out, place, on);
}

void JackSystem::send(const Backend::MidiEngine::QelMidiMessage& message) noexcept {
    const PeriodClock* const clock = clock_.load(std::memory_order_relaxed);
    if (clock == nullptr || !ports_->process().send(message.getOutput(), toBytes(message), clock->dueFrame(message))) {
        unsendable_.fetch_add(1, std::memory_order_relaxed);
    }
}

MidiSystemCounts JackSystem::counts() const noexcept {
    const JackProcess::Counters& counters = ports_->process().counters();
    MidiSystemCounts counts;
    counts.sysExDropped = counters.sysEx.load(std::memory_order_relaxed);
    counts.malformedDropped = counters.malformed.load(std::memory_order_relaxed);
    counts.arrivalsLost = counters.arrivalsLost.load(std::memory_order_relaxed);
    counts.unsendable = unsendable_.load(std::memory_order_relaxed);
    counts.overflows = counters.overflows.load(std::memory_order_relaxed);
    counts.late = counters.late.load(std::memory_order_relaxed);
    return counts;
}

} // namespace Host
