#include "e2e/JackPeer.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <jack/midiport.h>

namespace {

std::string textOf(const std::uint8_t* bytes, std::size_t size) {
    char status[4];
    std::snprintf(status, sizeof status, "%02X", static_cast<unsigned>(size > 0 ? bytes[0] : 0));
    std::string text = status;
    for (std::size_t i = 1; i < size; ++i) {
        text += ' ' + std::to_string(bytes[i]);
    }
    return text;
}

} // namespace

JackPeer::JackPeer(const std::string& name) : client_(jack_client_open(name.c_str(), JackNoStartServer, nullptr)) {
    if (client_ == nullptr) {
        return;
    }
    out_ = jack_port_register(client_, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    in_ = jack_port_register(client_, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    jack_set_process_callback(
        client_,
        [](jack_nframes_t frames, void* data) {
            static_cast<JackPeer*>(data)->process(frames);
            return 0;
        },
        this);
    jack_set_xrun_callback(
        client_,
        [](void* data) {
            ++static_cast<JackPeer*>(data)->xruns_;
            return 0;
        },
        this);
    jack_activate(client_);
}

JackPeer::~JackPeer() {
    if (client_ != nullptr) {
        jack_client_close(client_);
    }
}

bool JackPeer::sees(const std::string& port) const {
    return jack_port_by_name(client_, port.c_str()) != nullptr;
}

bool JackPeer::connect(const std::string& to, const std::string& from) const {
    const auto done = [](int result) { return result == 0 || result == EEXIST; };
    return done(jack_connect(client_, jack_port_name(out_), to.c_str())) &&
           done(jack_connect(client_, from.c_str(), jack_port_name(in_)));
}

std::vector<std::string> JackPeer::connections(const std::string& port) const {
    std::vector<std::string> names;
    if (const jack_port_t* const handle = jack_port_by_name(client_, port.c_str())) {
        if (const char** const found = jack_port_get_all_connections(client_, handle)) {
            for (const char** name = found; *name != nullptr; ++name) {
                names.emplace_back(*name);
            }
            jack_free(found);
        }
    }
    return names;
}

void JackPeer::send(std::vector<std::vector<std::uint8_t>> messages, std::vector<std::int32_t> offsets) {
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < messages.size(); ++i) {
        outgoing_.push_back({std::move(messages[i]), offsets[i % offsets.size()], true});
    }
}

void JackPeer::sendAtOnce(std::vector<std::vector<std::uint8_t>> messages) {
    const std::lock_guard lock(mutex_);
    for (auto& message : messages) {
        outgoing_.push_back({std::move(message), 0, false});
    }
}

void JackPeer::forget() {
    const std::lock_guard lock(mutex_);
    sent_.clear();
    received_.clear();
}

std::vector<JackPeer::Event> JackPeer::sent() const {
    const std::lock_guard lock(mutex_);
    return sent_;
}

std::vector<JackPeer::Event> JackPeer::received() const {
    const std::lock_guard lock(mutex_);
    return received_;
}

void JackPeer::process(jack_nframes_t frames) {
    void* const out = jack_port_get_buffer(out_, frames);
    void* const in = jack_port_get_buffer(in_, frames);
    const std::int64_t now = jack_last_frame_time(client_);
    const std::lock_guard lock(mutex_);
    for (std::uint32_t i = 0; i < jack_midi_get_event_count(in); ++i) {
        jack_midi_event_t event{};
        jack_midi_event_get(&event, in, i);
        received_.push_back({now + event.time, textOf(event.buffer, event.size)});
    }
    jack_midi_clear_buffer(out);
    std::size_t taken = 0;
    while (taken < outgoing_.size()) {
        const Outgoing& next = outgoing_[taken];
        const auto offset = std::min(static_cast<jack_nframes_t>(next.offset), frames - 1);
        if (jack_midi_event_write(out, offset, next.bytes.data(), next.bytes.size()) != 0) {
            break;
        }
        sent_.push_back({now + offset, textOf(next.bytes.data(), next.bytes.size())});
        ++taken;
        if (next.ownPeriod) {
            break;
        }
    }
    outgoing_.erase(outgoing_.begin(), outgoing_.begin() + static_cast<std::ptrdiff_t>(taken));
}
