#include "core/RegistrySettings.h"

#include "core/SettingsText.h"
#include "platform/SettingsStore.h"

#include <algorithm>
#include <optional>
#include <span>

namespace Backend {

namespace {

constexpr std::size_t numberSize = 4;

// Little-endian; bytes that are not there are 0.
[[nodiscard]] std::int32_t numberAt(std::span<const std::byte> bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = offset; i < std::min(bytes.size(), offset + numberSize); ++i) {
        number |= std::to_integer<std::uint32_t>(bytes[i]) << 8 * (i - offset);
    }
    return static_cast<std::int32_t>(number);
}

void read(const Platform::SettingsValue& stored, std::int32_t& value) {
    if (stored.data.size() <= numberSize) {
        value = numberAt(stored.data, 0);
    }
}

void read(const Platform::SettingsValue& stored, bool& value) {
    std::int32_t number = value ? 1 : 0;
    read(stored, number);
    value = number != 0;
}

void read(const Platform::SettingsValue& stored, std::string& value) {
    if (std::optional<std::string> text = storedText(stored)) {
        value = std::move(*text);
    }
}

void read(const Platform::SettingsValue& stored, WindowsLib::Rect& value) {
    if (stored.data.size() <= 4 * numberSize) {
        value = {numberAt(stored.data, 0), numberAt(stored.data, numberSize), numberAt(stored.data, 2 * numberSize),
                 numberAt(stored.data, 3 * numberSize)};
    }
}

[[nodiscard]] Platform::SettingsValue stored(std::int32_t value) {
    return Platform::SettingsValue::ofNumber(static_cast<std::uint32_t>(value));
}
[[nodiscard]] Platform::SettingsValue stored(bool value) {
    return Platform::SettingsValue::ofNumber(value ? 1 : 0);
}
[[nodiscard]] Platform::SettingsValue stored(const std::string& value) {
    return Platform::SettingsValue::ofString(value);
}
[[nodiscard]] Platform::SettingsValue stored(const WindowsLib::Rect& value) {
    Platform::SettingsValue result{Platform::SettingsKind::bytes, {}};
    for (const std::int32_t edge : {value.left, value.top, value.right, value.bottom}) {
        const std::vector<std::byte> bytes = stored(edge).data;
        result.data.insert(result.data.end(), bytes.begin(), bytes.end());
    }
    return result;
}

} // namespace

RegistrySettings::RegistrySettings() : entries_(defaults()) {}

RegistrySettings::Entries RegistrySettings::defaults() {
    return {{
        {"ProgDir", std::string()},
        {"DefaultBank", std::string()},
        {"GlobalKeyboard", false},
        {"MidiThru", true},
        {"RetroRecordEnabled", true},
        {"MaxMidiBufferFileSize", std::int32_t{100'000}},
        {"MidiBufferDir", std::string()},
        {"LargeDisplayFont", false},
        {"MouseSensitivity", std::int32_t{1}},
        {"DockToBottomEdge", false},
        {"DisplayMidiInputEvents", false},
        {"DisplayMidiOutputEvents", true},
        {"DisplayNumbers", false},
        {"DisplayHeight", std::int32_t{200}},
        {"LastWindowPosition", WindowsLib::Rect{-1, -1, -1, -1}},
        {"EnabledMidiInputs", std::string()},
        {"EnabledMidiOutputs", std::string()},
        {"AlwaysOnTop", false},
        {"UseSkinBorder", true},
        {"DefaultMidiOutput", std::int32_t{0}},
        {"ClickZoneChannelTranspose", false},
        {"Debug", false},
        {"RetroRecordBufferSize", std::int32_t{10}},
    }};
}

void RegistrySettings::loadFromRegistry(Platform::SettingsStore& store, const std::string& keyPath) {
    const auto key = store.openOrCreate(Platform::SettingsRoot::currentUser, keyPath);
    if (!key) {
        return;
    }
    for (Entry& entry : entries_) {
        if (const auto value = key->read(entry.name)) {
            std::visit([&](auto& content) { read(*value, content); }, entry.value);
        }
        entry.changed = false;
    }
    midiInputsEnabled_ = getBoolVectorFromString(getEnabledMidiInputs());
    midiOutputsEnabled_ = getBoolVectorFromString(getEnabledMidiOutputs());
}

void RegistrySettings::saveToRegistry(Platform::SettingsStore& store, const std::string& keyPath) {
    const auto key = store.openOrCreate(Platform::SettingsRoot::currentUser, keyPath);
    if (!key) {
        return;
    }
    setEnabledMidiInputs(getStringFromBoolVector(midiInputsEnabled_));
    setEnabledMidiOutputs(getStringFromBoolVector(midiOutputsEnabled_));
    for (Entry& entry : entries_) {
        if (entry.changed) {
            static_cast<void>(
                key->write(entry.name, std::visit([](const auto& content) { return stored(content); }, entry.value)));
            entry.changed = false;
        }
    }
}

std::vector<bool> RegistrySettings::getBoolVectorFromString(const std::string& text) {
    std::vector<bool> values;
    for (const char each : text) {
        values.push_back(each == 'Y' || each == 'y');
    }
    return values;
}

std::string RegistrySettings::getStringFromBoolVector(const std::vector<bool>& values) {
    std::string text;
    for (const bool each : values) {
        text += each ? 'Y' : 'N';
    }
    return text;
}

void RegistrySettings::setEnabled(std::vector<bool>& list, int index, bool on) {
    if (index >= 0) {
        const auto place = static_cast<std::size_t>(index);
        list.resize(place + 1);
        list[place] = on;
    }
}

bool RegistrySettings::isEnabled(const std::vector<bool>& list, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < list.size() && list[static_cast<std::size_t>(index)];
}

} // namespace Backend
