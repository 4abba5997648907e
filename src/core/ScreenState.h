// Which panels of the main window are showing.
#pragma once

struct ScreenState {
    bool system = true;
    bool help = false;
    bool display = false;
    bool computerInput = false;
    bool control = false;
    bool midiInput = false;
    bool oscillator = false;
    bool joystick = false;
    bool output = false;
    bool cc = false;
    bool layer = false;
    bool zone = false;

    bool operator==(const ScreenState&) const = default;
};
