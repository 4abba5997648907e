// What the keys of the computer keyboard do, and which of them are down.
#pragma once

#include "desktop/models/Model.h"
#include "desktop/models/Underway.h"
#include "input/KeyConfigurationMap.h"

#include <QString>
#include <optional>
#include <set>
#include <vector>

namespace Desktop {

class Models;

class KeysModel final : public Model {
    Q_OBJECT

public:
    explicit KeysModel(Models& models);

    [[nodiscard]] const Backend::ComputerInput::KeyConfigurationMap& map() const { return map_; }
    [[nodiscard]] const Backend::ComputerInput::KeyConfiguration* find(const Key& key) const { return map_.find(key); }
    // True when the key does something.
    [[nodiscard]] bool isMapped(const Key& key) const;
    // ... also while another program has the keyboard, when global keys are on.
    [[nodiscard]] bool isGlobal(const Key& key) const;
    // What the key does, in short for its face and in full for the help line; empty for nothing.
    [[nodiscard]] QString shortText(const Key& key) const;
    [[nodiscard]] QString longText(const Key& key) const;
    // The note it starts and the zone it starts it in, if it starts one.
    struct KeyNote {
        int note = 0;
        int zone = -1;
    };
    [[nodiscard]] std::optional<KeyNote> noteOf(const Key& key) const;

    // Edits, which can be undone. Those of one gesture are one.
    void put(const QString& text, const std::vector<Backend::ComputerInput::KeyConfiguration>& configurations,
             bool isGesture = false);
    void clear(const Key& key);
    void setUseKeyUpMod(bool on);

    // What the hand does.
    void press(const Key& key, bool repeat);
    void release(const Key& key);
    [[nodiscard]] const std::set<std::uint32_t>& down() const { return down_; } // codes
    void loadPreset(const std::string& name);

signals:
    void keyMoved(std::uint32_t code, bool isDown);

private:
    // As a value that can be held against another.
    struct Snapshot {
        Backend::ComputerInput::KeyConfigurationMap map;
        friend bool operator==(const Snapshot& a, const Snapshot& b) {
            return a.map.useKeyUpMod == b.map.useKeyUpMod && a.map.hasSameElements(b.map);
        }
    };

    void apply(const Backend::ComputerInput::KeyConfigurationMap& map);
    void edit(const QString& text, Backend::ComputerInput::KeyConfigurationMap after, int key = 0);

    Models& models_;
    Backend::ComputerInput::KeyConfigurationMap map_;
    Underway<Snapshot> underway_;
    std::set<std::uint32_t> down_;
};

} // namespace Desktop
