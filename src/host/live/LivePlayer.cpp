#include "host/live/LivePlayer.h"

#include "backend/OscMessageManager.h"
#include "core/Barrier.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "host/live/EventPrinter.h"
#include "midiengine/MidiEngine.h"

#include <mutex>
#include <utility>

namespace Host {

using Backend::MidiEngine::QelMidiMessage;

LivePlayer::LivePlayer(std::unique_ptr<MidiSystem> system)
    : system_(std::move(system)), clock_(system_->createClock(*this)) {}

LivePlayer::~LivePlayer() {
    system_->stop();
    stop();
}

void LivePlayer::sendClockTo(std::vector<std::string> parts) {
    clockSender_ = std::make_unique<ClockSender>(*system_, std::move(parts));
    clockSender_->lookAtPorts();
}

void LivePlayer::fixTempoSource(std::uint8_t source) {
    fixedTempoSource_ = source;
    clock_->sync().follow(source);
}

void LivePlayer::start(Backend::QelIF& qel) {
    qel_ = &qel;
    engine_ = &qel.getMidiEngine();
    errands_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("errands");
        runErrands();
    });
    errands_->resume();
    clock_->start();
    system_->start(*this);
}

void LivePlayer::releaseAll() {
    if (engine_ == nullptr) {
        return;
    }
    stopOscillators();
    {
        const std::lock_guard lock(engine_->getCriticalSection());
        ending_ = true;
        if (clockSender_) {
            clockSender_->transport(Transport::stop, 0);
        }
    }
    engine_->sendReset();
    system_->stop();
}

// They leave behind what they stop with, like a program that is changed.
void LivePlayer::stopOscillators() {
    qel_->getOscMessageManager().postChangePlaying(SelectType(SelectType::Kind::all),
                                                   OnOffToggle(OnOffToggle::State::off));
    Backend::Barrier barrier;
    if (qel_->getQelMessageManager().postBarrier(barrier)) {
        barrier.wait();
    }
}

void LivePlayer::stop() {
    stopping_.store(true);
    errand_.signal();
    errands_.reset();
    clock_->stop();
}

void LivePlayer::play(const QelMidiMessage& message, bool) {
    if ((ending_ && message.isNoteOn()) || (clockSender_ && clockSender_->displaces(message))) {
        return;
    }
    count(message);
    system_->send(message);
    for (EventPrinter* const printer : printers_) {
        printer->print(message.isTimedEvent() ? message.getPpq() : clock_->now(), message);
    }
}

void LivePlayer::count(const QelMidiMessage& message) noexcept {
    if (!message.isNote() || message.getOutput() < 0 || message.getChannel() > 15 || message.getD1() < 0) {
        return;
    }
    const auto place =
        (static_cast<std::size_t>(message.getOutput()) * 16 + static_cast<std::size_t>(message.getChannel())) * 128 +
        static_cast<std::size_t>(message.getD1());
    std::uint64_t& word = sounding_[place / 64];
    const std::uint64_t bit = std::uint64_t{1} << place % 64;
    const bool sounds = message.isNoteOn() && message.getD2() != 0;
    if (((word & bit) != 0) != sounds) {
        word ^= bit;
        held_.fetch_add(sounds ? 1 : -1, std::memory_order_relaxed);
    }
}

void LivePlayer::enableMidiInput(int port, bool on) {
    system_->enableInput(port, on);
}

void LivePlayer::enableMidiOutput(int port, bool on) {
    system_->enableOutput(port, on);
}

void LivePlayer::eventsArrived() {
    if (tempoSource_.load(std::memory_order_relaxed) == waitingForSlice) {
        clock_->wake();
    } else {
        clock_->eventsArrived();
    }
}

void LivePlayer::setTempo(int beatsPerMinute) {
    clock_->setTempo(beatsPerMinute);
}

// Whatever the source, slices go on.
void LivePlayer::setTempoSource(unsigned char source) {
    tempoSource_.store(source, std::memory_order_relaxed);
    if (source != waitingForSlice) {
        clock_->sync().follow(fixedTempoSource_.value_or(source));
    }
}

unsigned char LivePlayer::getTempoSource() {
    return tempoSource_.load(std::memory_order_relaxed);
}

void LivePlayer::sendProbe() {
    if ((probe_ == nullptr || probe_->isOpen()) && road_.begin()) {
        probe_ = std::make_unique<Backend::Barrier>([this] {
            road_.reachedEngine();
            eventsArrived();
        });
        static_cast<void>(qel_->getQelMessageManager().postBarrier(*probe_));
    }
}

void LivePlayer::playTimeSlice(Backend::Ticks from, Backend::Ticks to) {
    if (from < to) {
        road_.tickPlayed();
    }
    if (clockSender_ && from < to) {
        const std::lock_guard lock(engine_->getCriticalSection());
        if (!ending_) {
            sendBeat(from);
        }
    }
    engine_->playTimeSlice(from, to);
}

// Our own time begins with the first tick.
void LivePlayer::sendBeat(Backend::Ticks tick) {
    if (!std::exchange(beatsOfOurOwn_, true) && clock_->sync().source() == TempoSync::noSource) {
        clockSender_->transport(Transport::start, 0);
    }
    clockSender_->tick(tick);
}

void LivePlayer::transportChanged(Transport transport, std::int32_t sixteenth) {
    if (clockSender_) {
        const std::lock_guard lock(engine_->getCriticalSection());
        clockSender_->transport(transport, sixteenth);
    }
}

bool LivePlayer::hasBeat() const noexcept {
    const TempoSync& sync = clock_->sync();
    return sync.source() == TempoSync::noSource || sync.isLocked();
}

bool LivePlayer::isTickDependent() {
    return engine_->isTickDependent();
}

void LivePlayer::timeJumped() {
    timeJumped_.store(true);
    errand_.signal();
}

void LivePlayer::runErrands() {
    while (!stopping_.load()) {
        errand_.wait();
        if (timeJumped_.exchange(false)) {
            engine_->sendReset();
        }
    }
}

void LivePlayer::received(std::vector<QelMidiMessage> messages, const std::function<void()>& taken) {
    Backend::QelMessageManager& backend = qel_->getQelMessageManager();
    if (messages.size() == 1) {
        backend.postProcessMidiInputEvent(messages.front());
    } else {
        backend.postProcessMidiInputEvents(std::move(messages));
    }
    if (taken) {
        Backend::Barrier barrier(taken);
        if (backend.postBarrier(barrier)) {
            barrier.wait();
        }
    }
}

void LivePlayer::portsChanged() {
    Backend::QelMessageManager& backend = qel_->getQelMessageManager();
    backend.postSetMidiInputPorts(system_->inputs());
    backend.postSetMidiOutputPorts(system_->outputs());
    if (clockSender_) {
        clockSender_->lookAtPorts();
    }
}

} // namespace Host
