#include "input/HelpTexts.h"

#include <algorithm>
#include <array>

namespace Backend {

namespace {

struct HelpText {
    int id;
    std::string_view text;
};

// clang-format off
constexpr auto texts = std::to_array<HelpText>({
    // Nothing, and what only translations do.
    {5450, "Does nothing. Choose it to silence an input: whatever it did before, it does no longer."},
    {5451, "Passes the incoming message on. Leave everything as it is to let it through untouched, or send it to another zone, output or channel, or with other data."},

    // Panels.
    {5297, "Shows or hides the main screen, where you choose programs, tempo and outputs."},
    {5298, "Shows or hides this help."},
    {5274, "Shows or hides the computer keyboard, where you say what each of its keys does."},
    {5275, "Shows or hides the on-screen controls: faders, knobs and numbers that send MIDI when you move them."},
    {5276, "Shows or hides the MIDI input panel, where you say what becomes of messages from your MIDI devices."},
    {5277, "Shows or hides the display, which lists the MIDI messages that come in and go out."},
    {5278, "Shows or hides the oscillators, which move a controller up and down in time."},
    {5279, "Shows or hides the joystick panel, where you say what sticks and buttons do."},
    {5280, "Shows or hides the output panel with its music keyboard."},
    {5281, "Shows or hides the list of all controllers with their values."},
    {5282, "Shows or hides the layers, the sounds that you play with one key."},
    {5283, "Shows or hides the zones, the regions of the keyboard with a transposition each."},

    // MIDI.
    {5452, "Starts a note. Give a key that starts a note the Note Off of the same note for its way up, or it will sound on. Velocity is how hard it is struck, from 1 to 127. Without output and channel the note goes through your layers."},
    {5453, "Ends a note. Zone, output, channel and note must be those of the Note On. Most instruments ignore the velocity."},
    {5454, "Sets a controller: 1 is modulation, 7 volume, 10 panorama, 11 expression, 64 the sustain pedal. Switches are off below 64 and on from there."},
    {5455, "Chooses another sound on the instrument, by its number from 0 to 127. Many manuals count from 1. Some instruments want a bank chosen first, with controllers 0 and 32."},
    {5456, "Chooses a song on a sequencer or drum machine, by its number from 0."},
    {5457, "Presses all keys of a channel harder, as the aftertouch of a keyboard does. 0 is no pressure."},
    {5458, "Bends the pitch of a channel: 8192 is the centre, 0 all the way down, 16383 all the way up. How far that is, the instrument decides. A key that bends should bend back when it comes up."},
    {5459, "Moves a sequencer to another place in its song, counted in sixteenth notes from the start. It stays where it is until it is started or continued."},
    {5460, "Chooses a bus on the few instruments that know this message, which the MIDI standard leaves open."},
    {5461, "Asks analogue synthesizers to tune themselves, which takes them a moment."},
    {5462, "Ends a System Exclusive message that an instrument is still waiting to see the end of."},
    {5463, "Sends one tick of the MIDI clock. There are 24 to a quarter note; other devices take their tempo from the time between them."},
    {5464, "Starts the song from its beginning on every device that listens."},
    {5465, "Goes on with the song from where it stopped, or from where Song Position has put it."},
    {5466, "Stops the song."},
    {5467, "Tells other devices that the line is alive. A device that has heard it once expects it again within a third of a second, or turns its notes off."},
    {5468, "Puts every instrument that listens back to the state after it was switched on. Use it with care."},
    {5469, "Presses one key that is down harder, on instruments with aftertouch for each key. 0 is no pressure."},

    // Window and menus.
    {5284, "Moves the main window. +10 and -10 move it by that many points, to the right and down or to the left and up; a number without a sign is the place to move to; empty leaves that direction alone."},
    {5296, "Opens the list of the programs in the bank, to choose one from."},
    {5300, "Opens the dialog in which you save the program or one of its sections."},
    {5304, "Opens the list of MIDI outputs, to choose the default one from."},

    // Presets.
    {5285, "Loads a preset for the computer keyboard. Keys that you hold down meanwhile end as they began."},
    {5286, "Loads a preset for the MIDI input: what becomes of messages from your MIDI devices."},
    {5287, "Loads a preset for the on-screen controls."},
    {5288, "Loads a preset for the joysticks."},
    {5289, "Loads a preset for the layers. What sounds at that moment ends."},
    {5290, "Loads a preset for the oscillators."},

    // Controls.
    {5291, "Selects another on-screen control: the next one in a direction, or the one at a row and column, such as 0,2."},
    {5292, "Gives the keyboard to an on-screen control, so that you can type a number into it."},
    {5293, "Moves an on-screen control and sends its message. +1 and -1 move it by a step, a number without a sign sets it."},
    {5294, "Sends the messages of on-screen controls as they stand, without moving them. Handy after an instrument was switched on."},

    // Program, outputs, tempo.
    {5295, "Changes to another program of the bank: the next one, the one before, or one by its number, counted from 0. After the last comes the first."},
    {5299, "Ends every note that sounds and forgets which keys are held. Use it when a note hangs."},
    {5303, "Makes another MIDI output the default, where all goes that names no output of its own. Only outputs that are on take part."},
    {5305, "Changes the tempo, between 10 and 500 beats a minute. +1 and -1 change it by a beat, a number without a sign sets it."},
    {5306, "Switches MIDI thru. While it is off, what your MIDI devices play does not go out again; keys, controls and joysticks still do."},
    {5307, "Switches the global keyboard. While it is on, the keys play even when another program has the keyboard."},

    // Zones.
    {5301, "Selects another zone: the next one, the one before, one by its number, or all. Keys that change the selected zone act on it from then on."},
    {5302, "Transposes a zone by semitones: +12 and -12 are an octave, a number without a sign sets the transposition. Notes that you hold end as they began."},

    // Layers.
    {5308, "Selects the layer on which the functions for layers act."},
    {5309, "Selects the layer that the layer panel shows for editing."},
    {5310, "Transposes a layer. +1 and -1 change it by a step, a number without a sign sets it. In a key, steps are those of its scale."},
    {5311, "Makes a layer louder or softer: the number is added to the velocity of each note. +1 and -1 change it by a step, a number without a sign sets it."},
    {5312, "Mutes a layer or lets it be heard again. A muted layer plays nothing."},
    {5313, "Makes a layer play one note at a time, or several again. In mono a new note ends the one before."},
    {5314, "Makes a layer a soloist. As long as there is one, only soloists play."},
    {5315, "Makes keys switch the notes of a layer: the first press starts a note, the second ends it (type1), or strikes it again (type2). Off plays a note for as long as its key is held."},

    // Oscillators.
    {5316, "Selects the oscillator on which the functions for oscillators act."},
    {5317, "Starts or stops an oscillator. Started again it goes on where it was."},
    {5318, "Changes the speed of an oscillator. +1 and -1 change it by a step, a number without a sign sets it."},
});
// clang-format on

} // namespace

std::string_view helpText(int helpId) {
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&](const HelpText& each) { return each.id == helpId; });
    return found == texts.end() ? std::string_view() : found->text;
}

} // namespace Backend
