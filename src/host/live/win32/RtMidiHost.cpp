#include "host/live/RtMidiHost.h"

#include <RtMidi.h>

namespace Host {

namespace {
bool always() {
    return true;
}
} // namespace

const RtMidiHost& rtMidiHost() noexcept {
    static const RtMidiHost host{"WinMM", RtMidi::WINDOWS_MM, false, always};
    return host;
}

} // namespace Host
