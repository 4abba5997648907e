#include "host/live/linux/JackProcess.h"

#include "platform/Clocks.h"

#include <algorithm>
#include <jack/midiport.h>
#include <limits>
#include <utility>

namespace Host {

using namespace std::chrono_literals;

namespace {

// Several periods of everything that fits into JACK's own port buffers.
constexpr std::size_t arrivalRoom = 16384;
constexpr std::size_t departureRoom = 32768;
constexpr std::size_t queueRoom = departureRoom; // all may be for one port
// What is more than a burst. The rest of the room is for ends of notes: of as many as can be held, twice.
constexpr std::size_t fullAt = departureRoom - 2 * 4096;
// A server that stood still for so long has made of what waits something that nobody wants to hear any more.
constexpr std::chrono::nanoseconds longSilence = 1s;

// What is not made up for when it is too late: the begin of a note, a clock.
bool isOfItsMoment(const MidiBytes& message) {
    return ((message.bytes[0] & 0xF0U) == 0x90 && message.bytes[2] != 0) || message.bytes[0] == 0xF8;
}

} // namespace

JackProcess::JackProcess() : arrivals_(arrivalRoom), departures_(departureRoom), room_(PortRoster::maxPlaces, fullAt) {}

void JackProcess::connect(jack_client_t* client, std::uint32_t connection) {
    latestDue_.store(std::numeric_limits<std::int64_t>::max());
    client_.store(client);
    connection_.store(connection);
}

void JackProcess::disconnect() {
    client_.store(nullptr);
    for (int place = 0; place < PortRoster::maxPlaces; ++place) {
        inputs_[static_cast<std::size_t>(place)].store(nullptr);
        outputs_[static_cast<std::size_t>(place)].port.store(nullptr);
    }
    static_cast<void>(processing_.waitUntilOutside());
}

void JackProcess::setInput(int place, jack_port_t* port) {
    inputs_[static_cast<std::size_t>(place)].store(port);
    inputPlaces_.store(std::max(inputPlaces_.load(), place + 1));
    static_cast<void>(processing_.waitUntilOutside());
}

void JackProcess::setOutput(int place, jack_port_t* port) {
    Output& output = outputs_[static_cast<std::size_t>(place)];
    if (!output.ownedQueue) {
        output.ownedQueue = std::make_unique<DueQueue>(queueRoom);
        output.queue.store(output.ownedQueue.get());
    }
    // Two whole periods see the old port closing; JACK would repeat for ever what is left in its buffer.
    output.closing.store(port == nullptr);
    if (output.port.load() != nullptr) {
        const std::uint32_t period = periods();
        for (int tries = 0; tries < 100 && periods() - period < 2; ++tries) {
            Platform::sleepMilliseconds(1);
        }
    }
    output.port.store(port);
    outputPlaces_.store(std::max(outputPlaces_.load(), place + 1));
    static_cast<void>(processing_.waitUntilOutside());
}

void JackProcess::setClock(PeriodClock* clock) {
    clock_.store(clock);
    static_cast<void>(processing_.waitUntilOutside());
}

bool JackProcess::send(int place, const MidiBytes& bytes, std::int64_t due) noexcept {
    if (place < 0 || place >= PortRoster::maxPlaces || bytes.size == 0 || client_.load() == nullptr ||
        outputs_[static_cast<std::size_t>(place)].port.load() == nullptr) {
        return false;
    }
    if (const std::uint32_t connection = connection_.load(); connection != dueConnection_) {
        dueConnection_ = connection;
        lastDue_.fill(0);
        room_.clear();
    }
    if (const std::int64_t waiting = waiting_.load(std::memory_order_relaxed);
        !room_.admits(place, bytes, static_cast<std::size_t>(std::max<std::int64_t>(waiting, 0)))) {
        counters_.overflows.fetch_add(1, std::memory_order_relaxed);
        return false;
    }
    std::int64_t& last = lastDue_[static_cast<std::size_t>(place)];
    const bool soon = due == PeriodClock::asSoonAsPossible;
    const std::int64_t frame = std::min(soon ? last : due, latestDue_.load(std::memory_order_relaxed));
    last = std::max(last, frame);
    waiting_.fetch_add(1, std::memory_order_relaxed);
    if (!departures_.push({{frame, bytes}, static_cast<std::uint8_t>(place), soon})) {
        left(1);
        counters_.overflows.fetch_add(1, std::memory_order_relaxed);
        return false;
    }
    return true;
}

void JackProcess::process(jack_nframes_t frames) noexcept {
    processing_.enter();
    if (client_.load() != nullptr) {
        const bool isLate = comesLate();
        updateFrame();
        limitDues(frames);
        const std::int64_t lastArrival = readInputs(frames);
        if (lastArrival >= 0) {
            arrivalEvent_.signal();
        }
        if (PeriodClock* const clock = clock_.load()) {
            clock->periodBegins({frame_, static_cast<std::int32_t>(frames),
                                 static_cast<std::int32_t>(jack_get_sample_rate(client_.load())), lastArrival,
                                 seenConnection_, 0, readTransport(*clock)});
        }
        sortDepartures(isLate);
        const int places = outputPlaces_.load();
        for (int place = 0; place < places; ++place) {
            writeOutput(outputs_[static_cast<std::size_t>(place)], frames);
        }
        periods_.fetch_add(1, std::memory_order_release);
    }
    processing_.leave();
}

// A timebase master says bars, beats and ticks; how many beats came before this one does not matter.
TransportReading JackProcess::readTransport(const PeriodClock& clock) const noexcept {
    TransportReading reading;
    if (clock.sync().source() != TempoSync::jackTransport) {
        return reading;
    }
    jack_position_t position{};
    reading.isRolling = jack_transport_query(client_.load(), &position) == JackTransportRolling;
    if ((position.valid & JackPositionBBT) != 0 && position.ticks_per_beat > 0 && position.beats_per_minute > 0) {
        reading.hasTempo = true;
        reading.tempo = position.beats_per_minute;
        const double bars = static_cast<double>(position.bar - 1) * static_cast<double>(position.beats_per_bar);
        reading.beats = bars + position.beat - 1 + position.tick / position.ticks_per_beat;
    }
    return reading;
}

void JackProcess::updateFrame() noexcept {
    const jack_nframes_t now = jack_last_frame_time(client_.load());
    if (const std::uint32_t connection = connection_.load(); connection != seenConnection_) {
        seenConnection_ = connection;
        frame_ = now;
        forgetQueued();
        return;
    }
    frame_ += static_cast<std::int32_t>(now - static_cast<jack_nframes_t>(frame_));
}

// A clock that is alone goes on by the system's time. Should the frames stand still meanwhile, what it plays would be
// due when they have made up for it. No tick is farther ahead of the frames than this (PeriodClock).
void JackProcess::limitDues(jack_nframes_t frames) noexcept {
    const auto rate = static_cast<std::int32_t>(jack_get_sample_rate(client_.load()));
    const auto period = static_cast<std::int32_t>(frames);
    latestDue_.store(frame_ + rate / 4 + period + PeriodClock::latencyOf({frame_, period, rate}),
                     std::memory_order_relaxed);
}

void JackProcess::forgetQueued() noexcept {
    Departing departing;
    while (departures_.pop(departing)) {
        left(1);
    }
    for (Output& output : outputs_) {
        if (DueQueue* const queue = output.queue.load()) {
            left(static_cast<std::int64_t>(queue->size()));
            queue->clear();
        }
    }
}

std::int64_t JackProcess::readInputs(jack_nframes_t frames) noexcept {
    std::int64_t last = -1;
    const int places = inputPlaces_.load();
    for (int place = 0; place < places; ++place) {
        if (jack_port_t* const port = inputs_[static_cast<std::size_t>(place)].load()) {
            last = std::max(last, readInput(static_cast<std::uint8_t>(place), port, frames));
        }
    }
    return last;
}

std::int64_t JackProcess::readInput(std::uint8_t place, jack_port_t* port, jack_nframes_t frames) noexcept {
    void* const buffer = jack_port_get_buffer(port, frames);
    if (buffer == nullptr) {
        return -1;
    }
    PeriodClock* const clock = clock_.load();
    std::int64_t last = -1;
    const std::uint32_t count = jack_midi_get_event_count(buffer);
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event{};
        if (jack_midi_event_get(&event, buffer, i) != 0) {
            continue;
        }
        Arrived arrived{frame_ + event.time, {}, place};
        switch (readMidiBytes(event.buffer, event.size, arrived.bytes)) {
        case Arrival::sysEx:
            counters_.sysEx.fetch_add(1, std::memory_order_relaxed);
            break;
        case Arrival::malformed:
            counters_.malformed.fetch_add(1, std::memory_order_relaxed);
            break;
        case Arrival::message:
            if (clock != nullptr && clock->sync().arrived(place, arrived.bytes, arrived.frame)) {
                break;
            }
            if (arrivals_.push(arrived)) {
                last = arrived.frame;
            } else {
                counters_.arrivalsLost.fetch_add(1, std::memory_order_relaxed);
            }
            break;
        }
    }
    return last;
}

bool JackProcess::comesLate() noexcept {
    const std::chrono::nanoseconds before = std::exchange(lastPeriodAt_, Platform::monotonicTime());
    return before.count() != 0 && lastPeriodAt_ - before > longSilence;
}

void JackProcess::sortDepartures(bool areOld) noexcept {
    Departing departing;
    while (departures_.pop(departing)) {
        if (!departing.soon && (areOld || departing.message.due < frame_)) {
            counters_.late.fetch_add(1, std::memory_order_relaxed);
        }
        if (areOld && isOfItsMoment(departing.message.bytes)) {
            left(1);
            continue;
        }
        DueQueue* const queue = outputs_[departing.place].queue.load();
        if (queue == nullptr || !queue->push(departing.message)) {
            left(1);
            counters_.overflows.fetch_add(1, std::memory_order_relaxed);
        }
    }
}

void JackProcess::writeOutput(Output& output, jack_nframes_t frames) noexcept {
    DueQueue* const queue = output.queue.load();
    if (queue == nullptr) {
        return;
    }
    jack_port_t* const port = output.port.load();
    void* const buffer = port == nullptr ? nullptr : jack_port_get_buffer(port, frames);
    if (buffer != nullptr) {
        jack_midi_clear_buffer(buffer);
    }
    if (buffer == nullptr || output.closing.load()) { // nobody will ever hear it
        left(static_cast<std::int64_t>(queue->size()));
        queue->clear();
        return;
    }
    while (const DueMessage* const next = queue->front()) {
        const std::int64_t offset = std::max<std::int64_t>(next->due - frame_, 0);
        if (offset >= frames) {
            return;
        }
        if (jack_midi_event_write(buffer, static_cast<jack_nframes_t>(offset), next->bytes.bytes.data(),
                                  next->bytes.size) != 0) {
            // Full: the rest leaves with the next period.
            counters_.overflows.fetch_add(1, std::memory_order_relaxed);
            return;
        }
        queue->pop();
        left(1);
    }
}

} // namespace Host
