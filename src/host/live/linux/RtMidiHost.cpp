#include "host/live/RtMidiHost.h"

#include <RtMidi.h>
#include <unistd.h>

namespace Host {

namespace {

// The sequencer's device. Without it the ALSA library only prints complaints.
bool sequencerIsThere() {
    return access("/dev/snd/seq", R_OK | W_OK) == 0;
}

} // namespace

const RtMidiHost& rtMidiHost() noexcept {
    static const RtMidiHost host{"ALSA", RtMidi::LINUX_ALSA, true, sequencerIsThere};
    return host;
}

} // namespace Host
