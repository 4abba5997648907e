#include "platform/MidiDevices.h"

#include "platform/win32/WideText.h"

// clang-format off
#include <windows.h> // before what needs it
#include <mmsystem.h>
// clang-format on

namespace Platform {

bool virtualMidiInputExists(const std::string& name) {
    const UINT count = midiInGetNumDevs();
    for (UINT device = 0; device < count; ++device) {
        MIDIINCAPSW abilities{};
        if (midiInGetDevCapsW(device, &abilities, sizeof abilities) == MMSYSERR_NOERROR &&
            bytesOf(abilities.szPname) == name) {
            return true;
        }
    }
    return false;
}

} // namespace Platform
