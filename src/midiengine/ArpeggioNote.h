// A note that an arpeggio holds.
#pragma once

#include "generators/SequencePlayer.h"
#include "values/QelMidiMessage.h"

namespace Backend::ArpeggioManagement {

struct ArpeggioNote {
    MidiEngine::QelMidiMessage noteOn; // as the layer sends it
    SequenceManagement::SequencePlayer::Voice voice = 0;
    bool playing = false;
    bool released = false; // its key was let go while it sounded: it is given up when it ends
};

} // namespace Backend::ArpeggioManagement
