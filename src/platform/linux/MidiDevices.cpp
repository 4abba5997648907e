#include "platform/MidiDevices.h"

namespace Platform {

bool virtualMidiInputExists(const std::string&) {
    return true;
}

} // namespace Platform
