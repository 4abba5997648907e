// The user's preferences, kept between runs in the settings store of the current user.
#pragma once

#include "values/Rect.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace Platform {
class SettingsStore;
}

namespace Backend {

// The backend changes its one instance; others read it or a copy. Every setter marks its entry as changed, also when
// the value is the same. [backend]
class RegistrySettings final {
public:
    // The built-in defaults, nothing changed.
    RegistrySettings();

    // Takes what is stored at the key (created where needed). What is missing or unreadable keeps its value. Kinds are
    // not checked: a value of another kind is read as its raw bytes, those that a number lacks being 0.
    void loadFromRegistry(Platform::SettingsStore& store, const std::string& keyPath);
    // Writes the entries that have changed since they were loaded or saved, and always the two enable strings. A key
    // that does not open saves nothing; a value that cannot be written is passed over.
    void saveToRegistry(Platform::SettingsStore& store, const std::string& keyPath);

    // Ports by index; one that was never set is not enabled. Setting makes the list exactly index + 1 long, so the
    // ports above it are forgotten. Deliberate, stored lists end with the last port that was set: who changes one port
    // sets those above it again, in ascending order. A negative index does nothing.
    void setMidiInputEnabled(int index, bool on) { setEnabled(midiInputsEnabled_, index, on); }
    void setMidiOutputEnabled(int index, bool on) { setEnabled(midiOutputsEnabled_, index, on); }
    [[nodiscard]] bool isMidiInputEnabled(int index) const { return isEnabled(midiInputsEnabled_, index); }
    [[nodiscard]] bool isMidiOutputEnabled(int index) const { return isEnabled(midiOutputsEnabled_, index); }
    [[nodiscard]] const std::vector<bool>& getMidiInputsEnabled() const { return midiInputsEnabled_; }
    [[nodiscard]] const std::vector<bool>& getMidiOutputsEnabled() const { return midiOutputsEnabled_; }

    // A list as text, one character an entry: "Y" (when read, in either case) for true, "N" (or any other) for false.
    [[nodiscard]] static std::vector<bool> getBoolVectorFromString(const std::string& text);
    [[nodiscard]] static std::string getStringFromBoolVector(const std::vector<bool>& values);

    // Folders and files.
    [[nodiscard]] const std::string& getProgDir() const { return get<std::string>(Setting::progDir); }
    void setProgDir(const std::string& folder) { set(Setting::progDir, folder); }
    [[nodiscard]] const std::string& getDefaultBank() const { return get<std::string>(Setting::defaultBank); }
    void setDefaultBank(const std::string& path) { set(Setting::defaultBank, path); }

    // Playing.
    [[nodiscard]] bool getGlobalKeyboard() const { return get<bool>(Setting::globalKeyboard); }
    void setGlobalKeyboard(bool on) { set(Setting::globalKeyboard, on); }
    [[nodiscard]] bool getMidiThru() const { return get<bool>(Setting::midiThru); }
    void setMidiThru(bool on) { set(Setting::midiThru, on); }

    // The retrospective record: the size of one buffer file in bytes, and how many full ones are kept beside it.
    [[nodiscard]] bool isRetroRecordEnabled() const { return get<bool>(Setting::retroRecordEnabled); }
    void setRetroRecordEnabled(bool on) { set(Setting::retroRecordEnabled, on); }
    [[nodiscard]] int getMaxMidiBufferFileSize() const { return get<std::int32_t>(Setting::maxMidiBufferFileSize); }
    void setMaxMidiBufferFileSize(int size) { set(Setting::maxMidiBufferFileSize, std::int32_t{size}); }
    [[nodiscard]] int getRetroRecordBufferSize() const { return get<std::int32_t>(Setting::retroRecordBufferSize); }
    void setRetroRecordBufferSize(int files) { set(Setting::retroRecordBufferSize, std::int32_t{files}); }
    [[nodiscard]] const std::string& getMidiBufferDir() const { return get<std::string>(Setting::midiBufferDir); }
    void setMidiBufferDir(const std::string& folder) { set(Setting::midiBufferDir, folder); }

    // The user interface. A window position of four times -1 is none.
    [[nodiscard]] bool getLargeDisplayFont() const { return get<bool>(Setting::largeDisplayFont); }
    void setLargeDisplayFont(bool on) { set(Setting::largeDisplayFont, on); }
    [[nodiscard]] int getMouseSensitivity() const { return get<std::int32_t>(Setting::mouseSensitivity); }
    void setMouseSensitivity(int sensitivity) { set(Setting::mouseSensitivity, std::int32_t{sensitivity}); }
    [[nodiscard]] bool getDockToBottomEdge() const { return get<bool>(Setting::dockToBottomEdge); }
    void setDockToBottomEdge(bool on) { set(Setting::dockToBottomEdge, on); }
    [[nodiscard]] bool getDisplayMidiInputEvents() const { return get<bool>(Setting::displayMidiInputEvents); }
    void setDisplayMidiInputEvents(bool on) { set(Setting::displayMidiInputEvents, on); }
    [[nodiscard]] bool getDisplayMidiOutputEvents() const { return get<bool>(Setting::displayMidiOutputEvents); }
    void setDisplayMidiOutputEvents(bool on) { set(Setting::displayMidiOutputEvents, on); }
    [[nodiscard]] bool getDisplayNumbers() const { return get<bool>(Setting::displayNumbers); }
    void setDisplayNumbers(bool on) { set(Setting::displayNumbers, on); }
    [[nodiscard]] int getDisplayHeight() const { return get<std::int32_t>(Setting::displayHeight); }
    void setDisplayHeight(int height) { set(Setting::displayHeight, std::int32_t{height}); }
    [[nodiscard]] const WindowsLib::Rect& getLastWindowPosition() const {
        return get<WindowsLib::Rect>(Setting::lastWindowPosition);
    }
    void setLastWindowPosition(const WindowsLib::Rect& rect) { set(Setting::lastWindowPosition, rect); }

    // The enable lists as they were last loaded or saved.
    [[nodiscard]] const std::string& getEnabledMidiInputs() const {
        return get<std::string>(Setting::enabledMidiInputs);
    }
    void setEnabledMidiInputs(const std::string& text) { set(Setting::enabledMidiInputs, text); }
    [[nodiscard]] const std::string& getEnabledMidiOutputs() const {
        return get<std::string>(Setting::enabledMidiOutputs);
    }
    void setEnabledMidiOutputs(const std::string& text) { set(Setting::enabledMidiOutputs, text); }

    [[nodiscard]] bool getAlwaysOnTop() const { return get<bool>(Setting::alwaysOnTop); }
    void setAlwaysOnTop(bool on) { set(Setting::alwaysOnTop, on); }
    [[nodiscard]] bool getUseSkinBorder() const { return get<bool>(Setting::useSkinBorder); }
    void setUseSkinBorder(bool on) { set(Setting::useSkinBorder, on); }
    [[nodiscard]] int getDefaultMidiOutput() const { return get<std::int32_t>(Setting::defaultMidiOutput); }
    void setDefaultMidiOutput(int output) { set(Setting::defaultMidiOutput, std::int32_t{output}); }
    [[nodiscard]] bool getClickZoneChannelTranspose() const { return get<bool>(Setting::clickZoneChannelTranspose); }
    void setClickZoneChannelTranspose(bool on) { set(Setting::clickZoneChannelTranspose, on); }
    [[nodiscard]] bool getDebug() const { return get<bool>(Setting::debug); }
    void setDebug(bool on) { set(Setting::debug, on); }

private:
    // In the order in which they are saved.
    enum class Setting : std::size_t {
        progDir,
        defaultBank,
        globalKeyboard,
        midiThru,
        retroRecordEnabled,
        maxMidiBufferFileSize,
        midiBufferDir,
        largeDisplayFont,
        mouseSensitivity,
        dockToBottomEdge,
        displayMidiInputEvents,
        displayMidiOutputEvents,
        displayNumbers,
        displayHeight,
        lastWindowPosition,
        enabledMidiInputs,
        enabledMidiOutputs,
        alwaysOnTop,
        useSkinBorder,
        defaultMidiOutput,
        clickZoneChannelTranspose,
        debug,
        retroRecordBufferSize,
        count
    };
    // The alternative is the entry's kind and never changes.
    using Value = std::variant<bool, std::int32_t, std::string, WindowsLib::Rect>;
    struct Entry {
        const char* name; // in the settings store
        Value value;
        bool changed = false;
    };
    using Entries = std::array<Entry, static_cast<std::size_t>(Setting::count)>;

    [[nodiscard]] static Entries defaults();
    static void setEnabled(std::vector<bool>& list, int index, bool on);
    [[nodiscard]] static bool isEnabled(const std::vector<bool>& list, int index);

    template <typename Kind> [[nodiscard]] const Kind& get(Setting setting) const {
        return std::get<Kind>(entries_[static_cast<std::size_t>(setting)].value);
    }
    template <typename Kind> void set(Setting setting, const Kind& value) {
        Entry& entry = entries_[static_cast<std::size_t>(setting)];
        std::get<Kind>(entry.value) = value;
        entry.changed = true;
    }

    std::vector<bool> midiInputsEnabled_;
    std::vector<bool> midiOutputsEnabled_;
    Entries entries_;
};

} // namespace Backend
