#include "core/RegistrySettings.h"
#include "support/MemorySettings.h"
#include "support/RandomCases.h"

#include <functional>
#include <gtest/gtest.h>

namespace Backend {
namespace {

using Platform::SettingsKind;
using Platform::SettingsValue;
using TestSupport::MemorySettings;
using Names = std::vector<std::string>;

const std::string key = "Software\\Test\\3.2";

[[nodiscard]] SettingsValue bytes(std::initializer_list<int> values, SettingsKind kind = SettingsKind::bytes) {
    SettingsValue result{kind, {}};
    for (const int each : values) {
        result.data.push_back(static_cast<std::byte>(each));
    }
    return result;
}

[[nodiscard]] SettingsValue toStored(bool value) {
    return SettingsValue::ofNumber(value ? 1 : 0);
}
[[nodiscard]] SettingsValue toStored(int value) {
    return SettingsValue::ofNumber(static_cast<std::uint32_t>(value));
}
[[nodiscard]] SettingsValue toStored(const std::string& value) {
    return SettingsValue::ofString(value);
}
[[nodiscard]] SettingsValue toStored(const WindowsLib::Rect&) {
    return bytes({1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 0, 4, 0, 0, 0, 3, 0, 0});
}

// An entry, its default and another value.
struct Entry {
    const char* name;
    std::function<void(RegistrySettings&)> change;
    std::function<bool(const RegistrySettings&)> isDefault;
    std::function<bool(const RegistrySettings&)> isChanged;
    SettingsValue stored; // of the changed value
};

template <typename Value>
Entry entry(const char* name, Value (RegistrySettings::*get)() const, void (RegistrySettings::*set)(Value),
            std::remove_cvref_t<Value> standard, std::remove_cvref_t<Value> other) {
    return {name, [=](RegistrySettings& settings) { (settings.*set)(other); },
            [=](const RegistrySettings& settings) { return (settings.*get)() == standard; },
            [=](const RegistrySettings& settings) { return (settings.*get)() == other; }, toStored(other)};
}

[[nodiscard]] std::vector<Entry> entries() {
    using S = RegistrySettings;
    return {
        entry("ProgDir", &S::getProgDir, &S::setProgDir, "", "C:\\Tembrel"),
        entry("DefaultBank", &S::getDefaultBank, &S::setDefaultBank, "", "a.bnk"),
        entry("GlobalKeyboard", &S::getGlobalKeyboard, &S::setGlobalKeyboard, false, true),
        entry("MidiThru", &S::getMidiThru, &S::setMidiThru, true, false),
        entry("RetroRecordEnabled", &S::isRetroRecordEnabled, &S::setRetroRecordEnabled, true, false),
        entry("MaxMidiBufferFileSize", &S::getMaxMidiBufferFileSize, &S::setMaxMidiBufferFileSize, 100'000, -1),
        entry("RetroRecordBufferSize", &S::getRetroRecordBufferSize, &S::setRetroRecordBufferSize, 10, 0),
        entry("MidiBufferDir", &S::getMidiBufferDir, &S::setMidiBufferDir, "", "buffers"),
        entry("LargeDisplayFont", &S::getLargeDisplayFont, &S::setLargeDisplayFont, false, true),
        entry("MouseSensitivity", &S::getMouseSensitivity, &S::setMouseSensitivity, 1, 0x12345678),
        entry("DockToBottomEdge", &S::getDockToBottomEdge, &S::setDockToBottomEdge, false, true),
        entry("DisplayMidiInputEvents", &S::getDisplayMidiInputEvents, &S::setDisplayMidiInputEvents, false, true),
        entry("DisplayMidiOutputEvents", &S::getDisplayMidiOutputEvents, &S::setDisplayMidiOutputEvents, true, false),
        entry("DisplayNumbers", &S::getDisplayNumbers, &S::setDisplayNumbers, false, true),
        entry("DisplayHeight", &S::getDisplayHeight, &S::setDisplayHeight, 200, 0),
        entry("LastWindowPosition", &S::getLastWindowPosition, &S::setLastWindowPosition, {-1, -1, -1, -1},
              {1, -2, 1024, 768}),
        entry("AlwaysOnTop", &S::getAlwaysOnTop, &S::setAlwaysOnTop, false, true),
        entry("UseSkinBorder", &S::getUseSkinBorder, &S::setUseSkinBorder, true, false),
        entry("DefaultMidiOutput", &S::getDefaultMidiOutput, &S::setDefaultMidiOutput, 0, 3),
        entry("ClickZoneChannelTranspose", &S::getClickZoneChannelTranspose, &S::setClickZoneChannelTranspose, false,
              true),
        entry("Debug", &S::getDebug, &S::setDebug, false, true),
    };
}

TEST(RegistrySettings, EachEntryGoesToTheStoreAndBackByItself) {
    for (const Entry& row : entries()) {
        SCOPED_TRACE(row.name);
        MemorySettings store;
        RegistrySettings settings;
        EXPECT_TRUE(row.isDefault(settings));
        row.change(settings);
        settings.saveToRegistry(store, key);
        EXPECT_EQ(store.keys[key][row.name], row.stored);
        EXPECT_EQ(store.keys[key].size(), 3u) << "the entry and the two enable strings";

        RegistrySettings loaded;
        loaded.loadFromRegistry(store, key);
        for (const Entry& other : entries()) {
            EXPECT_TRUE(std::string(other.name) == row.name ? other.isChanged(loaded) : other.isDefault(loaded))
                << other.name;
        }
    }
}

TEST(RegistrySettings, SavesWhatHasChangedInOrderAndTheEnableStringsAlways) {
    const Names always = {"EnabledMidiInputs", "EnabledMidiOutputs"};
    MemorySettings store;
    RegistrySettings settings;
    settings.saveToRegistry(store, key);
    EXPECT_EQ(store.takeWritten(), always);
    settings.setDebug(false); // a setter marks its entry whatever the value
    settings.setMidiThru(false);
    settings.setProgDir("x");
    settings.saveToRegistry(store, key);
    EXPECT_EQ(store.takeWritten(), (Names{"ProgDir", "MidiThru", "EnabledMidiInputs", "EnabledMidiOutputs", "Debug"}));
    settings.saveToRegistry(store, key);
    EXPECT_EQ(store.takeWritten(), always);
    settings.setMidiThru(true);
    settings.loadFromRegistry(store, key);
    EXPECT_FALSE(settings.getMidiThru());
    settings.saveToRegistry(store, key);
    EXPECT_EQ(store.takeWritten(), always) << "loading forgets changes";
}

TEST(RegistrySettings, AKeyThatDoesNotOpenChangesNothing) {
    MemorySettings store;
    RegistrySettings settings;
    settings.setDisplayHeight(5);
    store.opens = false;
    settings.loadFromRegistry(store, key);
    settings.saveToRegistry(store, key);
    EXPECT_EQ(settings.getDisplayHeight(), 5);
    store.opens = true;
    settings.saveToRegistry(store, key);
    EXPECT_EQ(store.takeWritten().front(), "DisplayHeight") << "what could not be saved is still to be saved";
}

TEST(RegistrySettings, ReadsRawBytesWhateverTheKind) {
    struct Row {
        const char* name;
        const char* value;
        SettingsValue stored;
        std::function<bool(const RegistrySettings&)> holds;
    };
    using S = const RegistrySettings&;
    const Row rows[] = {
        {"flag of four characters", "GlobalKeyboard", bytes({'a', 'b', 'c', 0}, SettingsKind::string),
         [](S s) { return s.getGlobalKeyboard(); }},
        {"flag with a high byte only", "GlobalKeyboard", bytes({0, 0, 0, 1}),
         [](S s) { return s.getGlobalKeyboard(); }},
        {"flag of four zeros", "MidiThru", bytes({0, 0, 0, 0}, SettingsKind::string),
         [](S s) { return !s.getMidiThru(); }},
        {"flag of one byte", "MidiThru", bytes({0}), [](S s) { return !s.getMidiThru(); }},
        {"flag too long to read", "MidiThru", bytes({0, 0, 0, 0, 0}), [](S s) { return s.getMidiThru(); }},
        {"number of a short text", "DisplayHeight", SettingsValue::ofString("A"),
         [](S s) { return s.getDisplayHeight() == 'A'; }},
        {"number of nothing", "DisplayHeight", bytes({}), [](S s) { return s.getDisplayHeight() == 0; }},
        {"number of three bytes", "DisplayHeight", bytes({1, 2, 3}),
         [](S s) { return s.getDisplayHeight() == 0x030201; }},
        {"number too long to read", "DisplayHeight", SettingsValue::ofString("4321"),
         [](S s) { return s.getDisplayHeight() == 200; }},
        {"text of a number", "ProgDir", SettingsValue::ofNumber(0x00004241),
         [](S s) { return s.getProgDir() == "AB"; }},
        {"text of a full number", "ProgDir", SettingsValue::ofNumber(0x44434241),
         [](S s) { return s.getProgDir() == "ABCD"; }},
        {"text up to its zero", "ProgDir", bytes({'a', 0, 'b', 0}, SettingsKind::string),
         [](S s) { return s.getProgDir() == "a"; }},
        {"text that just fits", "ProgDir", SettingsValue::ofString(std::string(999, 'x')),
         [](S s) { return s.getProgDir() == std::string(999, 'x'); }},
        {"text too long to read", "ProgDir", SettingsValue::ofString(std::string(1000, 'x')),
         [](S s) { return s.getProgDir().empty(); }},
        {"rectangle cut short", "LastWindowPosition", bytes({1, 0, 0, 0, 2}),
         [](S s) {
             return s.getLastWindowPosition() == WindowsLib::Rect{1, 2, 0, 0};
         }},
        {"rectangle too long to read", "LastWindowPosition", SettingsValue::ofString("0123456789ABCDEF"),
         [](S s) {
             return s.getLastWindowPosition() == WindowsLib::Rect{-1, -1, -1, -1};
         }},
        {"enabled ports in either case", "EnabledMidiInputs", SettingsValue::ofString("yNy"),
         [](S s) {
             return s.getMidiInputsEnabled() == std::vector<bool>{true, false, true};
         }},
    };
    for (const Row& row : rows) {
        MemorySettings store;
        store.keys[key][row.value] = row.stored;
        RegistrySettings settings;
        settings.loadFromRegistry(store, key);
        EXPECT_TRUE(row.holds(settings)) << row.name;
    }
}

TEST(RegistrySettings, AnyBytesCanBeReadAndSavedAgain) {
    RandomCases cases;
    auto& random = cases.generator();
    for (int round = 0; round < 300; ++round) {
        MemorySettings store;
        for (const Entry& row : entries()) {
            SettingsValue value{static_cast<SettingsKind>(random() % 6), {}};
            value.data.resize(random() % (random() % 8 == 0 ? 1100 : 20));
            std::ranges::generate(value.data, [&] { return static_cast<std::byte>(random()); });
            store.keys[key][row.name] = value;
        }
        RegistrySettings settings;
        settings.loadFromRegistry(store, key);
        settings.setProgDir(settings.getProgDir());
        settings.setDisplayHeight(settings.getDisplayHeight());
        settings.setLastWindowPosition(settings.getLastWindowPosition());
        settings.saveToRegistry(store, key);
        RegistrySettings again;
        again.loadFromRegistry(store, key);
        ASSERT_EQ(again.getProgDir(), settings.getProgDir());
        ASSERT_EQ(again.getDisplayHeight(), settings.getDisplayHeight());
        ASSERT_EQ(again.getLastWindowPosition(), settings.getLastWindowPosition());
    }
}

TEST(RegistrySettings, SettingAPortForgetsThoseAboveIt) {
    using Flags = std::vector<bool>;
    RegistrySettings settings;
    settings.setMidiInputEnabled(-1, true);
    EXPECT_EQ(settings.getMidiInputsEnabled(), Flags{});
    settings.setMidiInputEnabled(2, true);
    EXPECT_EQ(settings.getMidiInputsEnabled(), (Flags{false, false, true}));
    settings.setMidiInputEnabled(4, true);
    settings.setMidiInputEnabled(1, true);
    EXPECT_EQ(settings.getMidiInputsEnabled(), (Flags{false, true}));
    settings.setMidiOutputEnabled(0, true);
    EXPECT_EQ(settings.getMidiOutputsEnabled(), Flags{true});
    EXPECT_TRUE(settings.isMidiInputEnabled(1));
    for (const int port : {-1, 0, 2, 127}) {
        EXPECT_FALSE(settings.isMidiInputEnabled(port)) << port;
    }

    MemorySettings store;
    settings.saveToRegistry(store, key);
    EXPECT_EQ(store.keys[key]["EnabledMidiInputs"], SettingsValue::ofString("NY"));
    EXPECT_EQ(store.keys[key]["EnabledMidiOutputs"], SettingsValue::ofString("Y"));
    RegistrySettings loaded;
    loaded.loadFromRegistry(store, key);
    EXPECT_EQ(loaded.getMidiInputsEnabled(), settings.getMidiInputsEnabled());
    EXPECT_EQ(loaded.getMidiOutputsEnabled(), settings.getMidiOutputsEnabled());
}

} // namespace
} // namespace Backend
