// An engine on virtual time, driven by lines of text.
#pragma once

#include "midiengine/LayerList.h"
#include "midiengine/MidiEngine.h"
#include "midiengine/ZoneMap.h"
#include "support/FakePlayer.h"
#include "values/QelMidiMessage.h"

#include <string>
#include <vector>

// From elements like <Layer mono="true" solo="true"/>, one after the other. The name of a sequence is its text.
[[nodiscard]] Backend::Layers::LayerList layersOf(const std::string& elements);
// From ids and transpositions like "1:12 3:-5".
[[nodiscard]] Backend::Zones::ZoneMap zonesOf(const std::string& zones);

// Three open outputs and two open inputs; the calling thread is the clock, and there is no worker thread.
class EngineRig final {
public:
    explicit EngineRig(const std::string& layers = "<Layer/>", const std::string& zones = "");

    TestSupport::FakePlayer player;
    Backend::MidiEngine::MidiEngine engine{player};
    std::vector<Backend::MidiInputPort> inputs;
    std::vector<Backend::MidiOutputPort> outputs;
    int tick = 0; // the next to be played

    // Runs steps, parted by "; ", each in the next tick:
    //   on NOTE VELOCITY, off NOTE [VELOCITY], cc NUMBER VALUE, bend LOW HIGH, program NUMBER
    //       each with any of in=N (0; -1: not from an input) out=N ch=N zone=N
    //   default N, thru on|off, zone ID TRANSPOSE, zones [ID:TRANSPOSE ...], layers ELEMENTS, reset, hardreset
    //   with EVENT: one of the above, in the tick of the next step, before it; wait TICKS
    //   output N on|off, input N on|off: asked of the engine; unplug N, plug N: an output vanishes, comes back
    void run(const std::string& steps);
    // The same, and what was played, parted by "; ".
    [[nodiscard]] std::string play(const std::string& steps);

    // Plays the tick after these events have been handed in for it.
    void playTick(const std::vector<Backend::MidiEngine::QelMidiMessage>& events = {});
    void slice(int from, int to);
    [[nodiscard]] std::string takePlayed();

    void openOutput(int port, bool open); // as the host does: asked for, then listed again
    void openInput(int port, bool open);
    void plug(int port, bool present);

private:
    void runStep(const std::string& step);
};

// One event of the text above.
[[nodiscard]] Backend::MidiEngine::QelMidiMessage eventOf(const std::string& text);
