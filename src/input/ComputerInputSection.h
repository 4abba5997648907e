// The computer keyboard of the current program.
#pragma once

#include "input/KeyConfigurationMap.h"
#include "input/PressedKeys.h"
#include "input/SectionPresets.h"

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace Backend::ComputerInput {

// Starts as the built-in keyboard. Held keys keep what they went down with (PressedKeys). [backend]
class ComputerInputSection final {
public:
    // All outlive the section; the folder need not exist.
    ComputerInputSection(QelIF& qel, std::filesystem::path presetFolder,
                         const std::function<void(const Platform::Fault&)>& reportFault);

    [[nodiscard]] const KeyConfigurationMap& map() const { return *map_; }

    // Another one after each change.
    [[nodiscard]] const std::shared_ptr<const KeyConfigurationMap>& sharedMap() const { return map_; }

    // The keys. An unknown key and the key without a code do nothing.
    void keyDown(const Key& key, bool repeat);
    void keyUp(const Key& key);

    // Whole sections.

    void setDefault();
    // A section of a program. One that names a preset stands for it: for its keys with useKeyUpMod; without a readable
    // file for the preset "000 - Default", without that for the built-in keyboard. Its own keys, if any, come on top.
    void read(const Platform::XmlElement& section);
    // With `allowReference` a section whose preset holds the same keys, or has no file, is written as the name of the
    // preset.
    void write(std::ostream& out, int depth, bool allowReference) const;
    void set(KeyConfigurationMap map);

    // Single keys: each is added or replaces the one with its id. A preset without a file then stands for nothing any
    // more and is forgotten.
    void put(const std::vector<KeyConfiguration>& configurations);
    void setUseKeyUpMod(bool on);

    // Presets, by name.

    // What cannot be read is reported and changes nothing; "000 - Default" without a file is the built-in keyboard.
    void loadPreset(const std::string& name);
    // With a list of keys only those, to be merged. A file that cannot be written changes nothing, without a word.
    void savePreset(const std::string& name, const std::vector<Key>& keys);
    void storePreset(const std::string& name, const KeyConfigurationMap& map) { presets_.store(name, map); }
    void deletePreset(const std::string& name) { presets_.remove(name); }

private:
    // As the section; a preset without a file stands for nothing any more and is forgotten.
    void setChanged(KeyConfigurationMap map);

    const KeyConfigurationMap builtIn_;
    Component::SectionPresets<KeyConfigurationMap, std::vector<Key>> presets_;
    std::shared_ptr<const KeyConfigurationMap> map_; // replaced, never changed: held keys share it
    PressedKeys pressed_;
};

} // namespace Backend::ComputerInput
