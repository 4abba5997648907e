// Which panels of the user interface show.
#pragma once

struct ScreenState {
    bool system = false;
    bool help = false;
    bool display = false;
    bool oscillator = false;
    bool joystick = false;
    bool computerInput = false;
    bool midiInput = false;
    bool output = false;
    bool cc = false;
    bool layer = false;
    bool control = false;
    bool zone = false;

    friend bool operator==(const ScreenState&, const ScreenState&) = default;
};
