#include "midiengine/Arpeggio.h"

#include "midiengine/ChordArpeggio.h"
#include "midiengine/OrderedArpeggio.h"

namespace Backend::ArpeggioManagement {

std::unique_ptr<Arpeggio> Arpeggio::create(const ArpeggioSetting& setting) {
    switch (setting.kind) {
    case ArpeggioKind::up:
        return std::make_unique<Arpeggios::UpArpeggio>(setting);
    case ArpeggioKind::down:
        return std::make_unique<Arpeggios::DownArpeggio>(setting);
    case ArpeggioKind::upDown:
        return std::make_unique<Arpeggios::UpDownArpeggio>(setting);
    case ArpeggioKind::chord:
        break;
    }
    return std::make_unique<Arpeggios::ChordArpeggio>(setting);
}

bool Arpeggio::isEndDue(const ArpeggioBeat& beat) {
    if (setting_.length >= setting_.beat) { // until the next one starts
        return beat.isOnBeat(setting_.beat);
    }
    if (lastStart_ >= beat.now()) { // the clock was set back: by whole beats
        const std::int32_t beats = (lastStart_ - beat.now()).count / setting_.beat + 1;
        lastStart_ = lastStart_ - Ticks{beats * setting_.beat};
    }
    return (beat.now() - lastStart_).count >= setting_.length;
}

} // namespace Backend::ArpeggioManagement
