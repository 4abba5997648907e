#include "midiengine/ArpeggioSetting.h"

#include "values/AttributeReading.h"
#include "values/TimeIntervals.h"

#include <array>

namespace Backend::ArpeggioManagement {

namespace {

struct Name {
    std::string_view element;
    std::string_view display;
    std::string_view meaning;
};

// By kind.
constexpr std::array names{
    Name{"ChordArpeggio", "Chord", "All held notes together on each beat."},
    Name{"UpArpeggio", "Up", "The held notes one after the other, upward."},
    Name{"DownArpeggio", "Down", "The held notes one after the other, downward."},
    Name{"UpDownArpeggio", "Up + Down", "The held notes upward and downward; the ends are not repeated."},
};

} // namespace

std::string ArpeggioSetting::summary() const {
    return std::string(names[static_cast<std::size_t>(kind)].display) + " Arp " + timeIntervalName(beat) +
           " Len:" + timeIntervalName(length);
}

const std::vector<ElementFormat>& arpeggioFormats() {
    static const std::vector<ElementFormat> formats = [] {
        std::vector<ElementFormat> kinds;
        for (const Name& name : names) {
            ElementFormat& format = kinds.emplace_back();
            format.name = name.element;
            format.meaning = name.meaning;
            format.attributes = {
                AttributeFormat::integerOf("beat", "480", 1, ArpeggioSetting::longest, "Ticks from note to note."),
                AttributeFormat::integerOf("length", "480", 1, ArpeggioSetting::longest, "Ticks that a note sounds."),
            };
            for (AttributeFormat& attribute : format.attributes) {
                attribute.clamped = true;
            }
        }
        return kinds;
    }();
    return formats;
}

std::optional<ArpeggioSetting> readArpeggio(const Platform::XmlElement& element) {
    const std::vector<ElementFormat>& formats = arpeggioFormats();
    for (std::size_t kind = 0; kind < formats.size(); ++kind) {
        if (element.name == formats[kind].name) {
            return ArpeggioSetting{static_cast<ArpeggioKind>(kind), readInteger(element, formats[kind]["beat"]),
                                   readInteger(element, formats[kind]["length"])};
        }
    }
    return std::nullopt;
}

void writeArpeggio(XmlWriter& xml, const ArpeggioSetting& arpeggio) {
    xml.begin(names[static_cast<std::size_t>(arpeggio.kind)].element)
        .attribute("beat", arpeggio.beat)
        .attribute("length", arpeggio.length)
        .end();
}

} // namespace Backend::ArpeggioManagement
