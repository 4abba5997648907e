#include "input/ActionAttributes.h"

#include "core/FolderNames.h"
#include "values/AttributeReading.h"

#include <algorithm>
#include <array>

namespace Backend::Actions {

namespace {
constexpr int notSet = 255;
}

std::vector<AttributeFormat> wayAttributes() {
    return {AttributeFormat::integerOf("zone", "255", 0, notSet, "The zone; 255: none."),
            AttributeFormat::integerOf("output", "255", 0, notSet, "The MIDI output; 255: the default output.")};
}

std::uint8_t readWay(const Platform::XmlElement& element, const AttributeFormat& format) {
    const int number = readInteger(element, format);
    return static_cast<std::uint8_t>(number >= 0 && number < notSet ? number : notSet);
}

template <> AttributeFormat attributeOf<OnOffToggle>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::wordOf(name, {"on", "off", "toggle"}, "toggle", meaning);
}

template <> AttributeFormat attributeOf<SelectType>(std::string_view name, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::of(AttributeKind::select, name, "selected", meaning);
    format.words = {"up", "down", "selected", "all"};
    format.minimum = 0;
    return format;
}

template <> AttributeFormat attributeOf<RelativeFixedValue>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::of(AttributeKind::relativeFixed, name, "", meaning);
}

template <> AttributeFormat attributeOf<NoteToggle>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::wordOf(name, {"off", "type1", "type2"}, "off", meaning);
}

template <> AttributeFormat attributeOf<SelectControlType>(std::string_view name, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::of(AttributeKind::selectControl, name, "selected", meaning);
    format.words = {"up", "down", "left", "right", "selected", "all"};
    return format;
}

template <> AttributeFormat attributeOf<std::string>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::of(AttributeKind::text, name, "", meaning);
}

void namePresetFolder(const Action& action, std::vector<AttributeFormat>& formats) {
    struct Row {
        std::string_view function;
        std::string_view folder;
    };
    static constexpr std::array rows = {
        Row{"LoadComputerInputPreset", FolderNames::computerInputPresets},
        Row{"LoadMidiInputPreset", FolderNames::midiInputPresets},
        Row{"LoadControlPreset", FolderNames::controlPresets},
        Row{"LoadJoystickInputPreset", FolderNames::joystickPresets},
        Row{"LoadLayerPreset", FolderNames::layerPresets},
        Row{"LoadOscillatorPreset", FolderNames::oscillatorPresets},
    };
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& each) { return each.function == action.function; });
    for (AttributeFormat& format : formats) {
        if (row != rows.end() && format.name == "preset") {
            format.presetFolder = row->folder;
        }
    }
}

} // namespace Backend::Actions
