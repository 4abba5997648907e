// What a section that names a preset stands for, and whether it still holds what its preset holds.
#pragma once

#include "input/PresetFolder.h"
#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/AttributeReading.h"
#include "values/ElementFormat.h"

#include <functional>
#include <string>
#include <utility>

namespace Backend::Component {

// Of the kind of section that is held in a Map: with presetName, clear(), merge(Map) and hasSameActions(Map). [backend]
template <typename Map> class SectionPresets final {
public:
    // Reads a section's own elements by its "merge". What a section says beside its elements is left as it is in the
    // map where the section stands for a preset.
    using Read = std::function<void(const Platform::XmlElement&, Map&)>;

    // `builtIn` is what "000 - Default" is without a file; both references outlive this.
    SectionPresets(PresetFolder folder, const ElementFormat& format, Read read, const Map& builtIn)
        : folder_(std::move(folder)), format_(format), read_(std::move(read)), builtIn_(builtIn) {}

    [[nodiscard]] const PresetFolder& folder() const { return folder_; }

    // `map` with a section of a program read into it. One that names a preset stands for it: without a readable file
    // for "000 - Default", without that for the built-in section; its own elements come on top.
    [[nodiscard]] Map readSection(const Platform::XmlElement& section, Map map) const {
        map.presetName = readText(section, format_["preset"]);
        if (map.presetName.empty()) {
            read_(section, map);
            return map;
        }
        if (!readBoolean(section, format_["merge"])) {
            map.clear();
        }
        map.merge(presetOrDefault(map.presetName));
        Map own = map;
        own.clear();
        read_(section, own);
        map.merge(own);
        if (!folder_.exists(map.presetName) && !presetOrDefault(map.presetName).hasSameActions(map)) {
            map.presetName.clear(); // the name alone would not give the same section again
        }
        return map;
    }

    // `map` with a preset read into it.
    [[nodiscard]] Platform::Result<Map> load(const std::string& name, Map map) const {
        if (name == defaultPresetName && !folder_.exists(name)) {
            map = builtIn_;
        } else {
            const Platform::Result<Platform::XmlElement> section = folder_.read(name);
            if (!section) {
                return section.fault();
            }
            read_(section.value(), map);
        }
        map.presetName = name;
        return map;
    }

    // True when the name of its preset says all of it: the preset holds the same, or has no file and the section has
    // not been changed since it was read.
    [[nodiscard]] bool saysAll(const Map& map, bool isChanged) const {
        if (map.presetName.empty()) {
            return false;
        }
        if (!folder_.exists(map.presetName)) {
            return !isChanged;
        }
        const Platform::Result<Map> stored = load(map.presetName, Map{});
        return stored && stored.value().hasSameActions(map);
    }

private:
    [[nodiscard]] Map presetOrDefault(const std::string& name) const {
        Platform::Result<Map> preset = load(name, Map{});
        if (!preset) {
            preset = load(std::string(defaultPresetName), Map{});
        }
        return preset ? std::move(preset.value()) : builtIn_;
    }

    PresetFolder folder_;
    const ElementFormat& format_;
    Read read_;
    const Map& builtIn_;
};

} // namespace Backend::Component
