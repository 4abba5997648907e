#include "values/ControllerNames.h"

#include <array>
#include <cstddef>

namespace Backend::MidiEngine {

namespace {

using Names = std::array<std::string, 128>;

// Controllers 0..31 and, as their low bytes, 32..63.
void nameContinuousControllers(Names& names, std::size_t first) {
    names[first + 1] = "Modulation wheel";
    names[first + 2] = "Breath control";
    names[first + 4] = "Foot controller";
    names[first + 5] = "Portamento time";
    names[first + 7] = "Channel Volume";
    names[first + 8] = "Balance";
    names[first + 10] = "Pan";
    names[first + 11] = "Expression Controller";
    names[first + 12] = "Effect control 1";
    names[first + 13] = "Effect control 2";
    for (std::size_t i = 0; i < 4; ++i) {
        names[first + 16 + i] = "General Purpose Ctl #" + std::to_string(i + 1);
    }
}

Names makeNames() {
    Names names;
    names.fill("Undefined");
    nameContinuousControllers(names, 0);
    nameContinuousControllers(names, 32);
    names[0] = "Bank Select (MSB)";
    names[6] = "Data Entry";
    names[32] = "Bank Select (LSB)";
    names[38] = "Data entry";
    names[64] = "Damper pedal on/off";
    names[65] = "Portamento on/off";
    names[66] = "Sustenuto on/off";
    names[67] = "Soft pedal on/off";
    names[68] = "Legato Footswitch";
    names[69] = "Hold 2";
    names[70] = "Sound Ctl 1 (Sound Variation)";
    names[71] = "Sound Ctl 2 (Timbre)";
    names[72] = "Sound Ctl 3 (Release Time)";
    names[73] = "Sound Ctl 4 (Attack Time)";
    names[74] = "Sound Ctl 5 (Brightness)";
    for (std::size_t i = 6; i <= 10; ++i) {
        names[69 + i] = "Sound Ctl " + std::to_string(i);
    }
    for (std::size_t i = 5; i <= 8; ++i) {
        names[75 + i] = "General Purpose Ctl #" + std::to_string(i);
    }
    names[84] = "Portamento Control";
    for (std::size_t i = 1; i <= 5; ++i) {
        names[90 + i] = "Effects " + std::to_string(i) + " Depth";
    }
    names[96] = "Data entry +1";
    names[97] = "Data entry -1";
    names[98] = "NRPN LSB";
    names[99] = "NRPN MSB";
    names[100] = "RPN LSB";
    names[101] = "RPN MSB";
    names[120] = "All Sound Off";
    names[121] = "Reset All Controllers";
    names[122] = "Local control on/off";
    names[123] = "All notes off";
    names[124] = "Omni mode off";
    names[125] = "Omni mode on";
    names[126] = "Poly mode on/off";
    names[127] = "Poly mode on";
    return names;
}

} // namespace

const std::string& controllerName(int controller) {
    static const Names names = makeNames();
    static const std::string undefined = "Undefined";
    return controller >= 0 && controller < 128 ? names[static_cast<std::size_t>(controller)] : undefined;
}

} // namespace Backend::MidiEngine
