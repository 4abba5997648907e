// The arpeggio of a layer as the user sets it up.
#pragma once

#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Backend::ArpeggioManagement {

enum class ArpeggioKind : std::uint8_t { chord, up, down, upDown };

// A value. What plays is an Arpeggio.
struct ArpeggioSetting {
    static constexpr std::int32_t longest = 1'000'000;

    ArpeggioKind kind = ArpeggioKind::chord;
    std::int32_t beat = 480;   // ticks from step to step, 1..longest
    std::int32_t length = 480; // ticks that each note sounds, 1..longest

    // "Up Arp 1/8 Len:1/16".
    [[nodiscard]] std::string summary() const;

    bool operator==(const ArpeggioSetting&) const = default;
};

// The elements "ChordArpeggio", "UpArpeggio", "DownArpeggio", "UpDownArpeggio".
[[nodiscard]] const std::vector<ElementFormat>& arpeggioFormats();
// Nothing for an element of another name. A number below 1 counts as 1.
[[nodiscard]] std::optional<ArpeggioSetting> readArpeggio(const Platform::XmlElement& element);
void writeArpeggio(XmlWriter& xml, const ArpeggioSetting& arpeggio);

} // namespace Backend::ArpeggioManagement
