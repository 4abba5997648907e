#include "host/SmfWriter.h"

#include "host/SmfMeta.h"
#include "values/BigEndian.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <algorithm>
#include <bitset>
#include <limits>

namespace Host {

using Backend::bigEndian;
using Platform::Outcome;

namespace {

constexpr char releaseVelocity = 100; // of the notes that the end of the file ends

} // namespace

struct SmfWriter::Track {
    explicit Track(std::filesystem::path overflow) : content(std::move(overflow)) {}

    SmfTrackWriter content;
    std::bitset<16 * 128> sounding; // by channel, then note
};

SmfWriter::SmfWriter(const std::string& target, const std::vector<std::string>& outputNames)
    : name_(target), outputNames_(outputNames), file_(target) {}

SmfWriter::~SmfWriter() = default;

Outcome SmfWriter::open() {
    if (const Outcome opened = file_.open(); !opened) {
        return opened;
    }
    for (const std::string& outputName : outputNames_) {
        tracks_.push_back(std::make_unique<Track>(file_.temporaryName()));
        tracks_.back()->content.addMeta(0, SmfMeta::trackName, outputName);
    }
    return Platform::success();
}

void SmfWriter::play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) {
    const auto output = static_cast<std::size_t>(message.getOutput());
    if (output >= tracks_.size()) { // a negative one, too
        return;
    }
    Track& track = *tracks_[output];
    const std::uint32_t shortMessage = message.getMidiOutShortMsg();
    const auto size = static_cast<std::size_t>(message.getMidiMessage().getMessageSize()) + 1;
    // Room for the escape's status and length in front of a system message.
    const char bytes[] = {'\xF7', static_cast<char>(size), static_cast<char>(shortMessage),
                          static_cast<char>(shortMessage >> 8 & 0x7F), static_cast<char>(shortMessage >> 16 & 0x7F)};
    const bool isSystem = (shortMessage & 0xFF) >= 0xF0;
    track.content.add(tick, isSystem ? std::string_view(bytes, size + 2) : std::string_view(bytes + 2, size));
    if (!isSystem && message.isNote()) {
        const std::size_t note = (shortMessage & 0x0F) << 7 | (shortMessage >> 8 & 0x7F);
        track.sounding[note] = message.isNoteOn() && message.getD2() != 0;
    }
}

void SmfWriter::setTempo(std::int32_t tick, int beatsPerMinute) {
    const auto beats = static_cast<std::uint32_t>(beatsPerMinute);
    const std::uint32_t microseconds = (60'000'000U + beats / 2) / beats;
    tracks_.front()->content.addMeta(tick, SmfMeta::tempo, bigEndian(microseconds, 3));
}

bool SmfWriter::isGood() const {
    return file_.isGood() &&
           std::all_of(tracks_.begin(), tracks_.end(), [](const auto& track) { return track->content.isGood(); });
}

Outcome SmfWriter::finish(std::int32_t tick) {
    file_.write("MThd" + bigEndian(6, 4) + bigEndian(1, 2) + bigEndian(static_cast<std::uint32_t>(tracks_.size()), 2) +
                bigEndian(Backend::ticksPerQuarter, 2));
    for (const auto& track : tracks_) {
        endNotes(*track, tick);
        if (track->content.size() > std::numeric_limits<std::uint32_t>::max()) {
            return Platform::Fault{name_, 0, "a track of more than 4 GiB does not fit into the format"};
        }
        if (!track->content.copyTo(file_)) {
            return Platform::Fault{name_, 0, "cannot be written: an intermediate file failed"};
        }
    }
    return file_.commit();
}

void SmfWriter::endNotes(Track& track, std::int32_t tick) {
    for (std::size_t note = 0; note < track.sounding.size(); ++note) {
        if (track.sounding[note]) {
            const char bytes[] = {static_cast<char>(0x80 | note >> 7), static_cast<char>(note & 0x7F), releaseVelocity};
            track.content.add(tick, {bytes, sizeof bytes});
        }
    }
    track.content.addMeta(0, SmfMeta::endOfTrack, {});
}

} // namespace Host
