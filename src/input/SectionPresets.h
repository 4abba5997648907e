// How a section of a program is stored: in programs, which may name a preset in its place, and as presets.
#pragma once

#include "input/PresetFolder.h"
#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/AttributeReading.h"
#include "values/ElementFormat.h"
#include "values/SectionFormat.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>

namespace Backend::Component {

// A kind of section as text. `Selection` says what of it is to be written.
template <typename Map, typename Selection> struct SectionText {
    // Reads a section's own elements by its "merge". What a section says beside its elements is left as it is in the
    // map where the section stands for a preset.
    std::function<void(const Platform::XmlElement&, Map&)> read;
    // Behind `depth` tabs.
    std::function<void(std::ostream&, int depth, const Map&)> write;
    // Only the selection, to be merged into another section.
    std::function<void(std::ostream&, const Map&, const Selection&)> writeSelected;
    // The name of its preset in place of what the section holds; where empty, that and nothing else.
    std::function<void(std::ostream&, int depth, const Map&)> writeReference{};
};

// Of the kind of section that is held in a Map: with presetName, clear(), merge(Map) and hasSameActions(Map). The
// presets are files in a folder; what is wrong with one is reported, and nothing else is done then. [backend]
template <typename Map, typename Selection> class SectionPresets final {
public:
    using Text = SectionText<Map, Selection>;

    // `builtIn` is what "000 - Default" is without a file; the references outlive this.
    SectionPresets(std::filesystem::path folder, const ElementFormat& format, Text text, const Map& builtIn,
                   const PresetFolder::Report& report)
        : folder_(std::move(folder), std::string(format.name)), format_(format), text_(std::move(text)),
          builtIn_(builtIn), report_(report) {}

    [[nodiscard]] bool exists(const std::string& name) const { return folder_.exists(name); }

    // Sections of programs.

    // `map` with a section of a program read into it. One that names a preset stands for it: without a readable file
    // for "000 - Default", without that for the built-in section; its own elements come on top.
    [[nodiscard]] Map readSection(const Platform::XmlElement& section, Map map) const {
        map.presetName = readText(section, format_["preset"]);
        if (map.presetName.empty()) {
            text_.read(section, map);
            return map;
        }
        if (!readBoolean(section, format_["merge"])) {
            map.clear();
        }
        map.merge(presetOrDefault(map.presetName));
        Map own = map;
        own.clear();
        text_.read(section, own);
        map.merge(own);
        if (!exists(map.presetName) && !presetOrDefault(map.presetName).hasSameActions(map)) {
            map.presetName.clear(); // the name alone would not give the same section again
        }
        return map;
    }

    // With `allowReference` a section that its preset says all of is written as the name of the preset: the preset
    // holds the same, or has no file and the section has not been changed since it was read.
    void writeSection(std::ostream& out, int depth, const Map& map, bool isChanged, bool allowReference) const {
        if (!allowReference || !saysAll(map, isChanged)) {
            text_.write(out, depth, map);
        } else if (text_.writeReference) {
            text_.writeReference(out, depth, map);
        } else {
            writeSectionReference(out, depth, format_.name, map.presetName);
        }
    }

    // Presets, by name.

    // `map` with a preset read into it.
    [[nodiscard]] std::optional<Map> load(const std::string& name, const Map& map) const {
        Platform::Result<Map> loaded = read(name, map);
        if (!loaded) {
            report_(loaded.fault());
            return std::nullopt;
        }
        return std::move(loaded.value());
    }
    // Of an empty selection all. True when the preset now says all of the map, which then has its name.
    [[nodiscard]] bool save(const std::string& name, const Map& map, const Selection& selection) const {
        if (selection.empty()) {
            return store(name, map);
        }
        std::ostringstream text;
        text_.writeSelected(text, map, selection);
        folder_.write(name, text.str(), report_);
        return false;
    }
    bool store(const std::string& name, const Map& map) const {
        std::ostringstream text;
        text_.write(text, 0, map);
        return folder_.write(name, text.str(), report_);
    }
    void remove(const std::string& name) const { folder_.remove(name, report_); }

private:
    [[nodiscard]] Platform::Result<Map> read(const std::string& name, Map map) const {
        if (name == defaultPresetName && !exists(name)) {
            map = builtIn_;
        } else {
            const Platform::Result<Platform::XmlElement> section = folder_.read(name);
            if (!section) {
                return section.fault();
            }
            text_.read(section.value(), map);
        }
        map.presetName = name;
        return map;
    }

    [[nodiscard]] Map presetOrDefault(const std::string& name) const {
        Platform::Result<Map> preset = read(name, Map{});
        if (!preset) {
            preset = read(std::string(defaultPresetName), Map{});
        }
        return preset ? std::move(preset.value()) : builtIn_;
    }

    [[nodiscard]] bool saysAll(const Map& map, bool isChanged) const {
        if (map.presetName.empty()) {
            return false;
        }
        if (!exists(map.presetName)) {
            return !isChanged;
        }
        const Platform::Result<Map> stored = read(map.presetName, Map{});
        return stored && stored.value().hasSameActions(map);
    }

    PresetFolder folder_;
    const ElementFormat& format_;
    Text text_;
    const Map& builtIn_;
    const PresetFolder::Report& report_;
};

} // namespace Backend::Component
