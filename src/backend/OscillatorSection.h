// The oscillators of the current program and what functions do to them.
#pragma once

#include "backend/OscillatorNotices.h"
#include "generators/OscList.h"
#include "input/SectionPresets.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace Backend {

class QelIF;
namespace MidiEngine {
class MidiEngine;
}

// Owns the master list; the engine gets copies and changes. The window, when there is one, is sent the list whenever it
// has changed, and the values of those that play (OscillatorMessages.h). [backend]
class OscillatorSection final {
public:
    // The references outlive the section. `wake` is called on the clock thread: it must not block and says whether
    // showValues() will be called.
    OscillatorSection(const QelIF& qel, MidiEngine::MidiEngine& engine, std::filesystem::path presetFolder,
                      const std::function<void(const Platform::Fault&)>& reportFault, std::function<bool()> wake);
    ~OscillatorSection();
    OscillatorSection(const OscillatorSection&) = delete;
    OscillatorSection& operator=(const OscillatorSection&) = delete;

    [[nodiscard]] const Oscillators::OscList& list() const { return list_; }

    // Whole sections. Those that play stop; the first oscillator is then selected.

    void setDefault() { set({}); }
    // A section of a program, which may stand for a preset (SectionPresets).
    void read(const Platform::XmlElement& section);
    // With `allowReference` a section that its preset says all of is written as the name of the preset.
    void write(std::ostream& out, int depth, bool allowReference) const;
    void set(Oscillators::OscList list);

    // The list as the window has made it: what it says plays and is selected. Where only speeds, playing and selection
    // differ, waves go on; otherwise all begin anew.
    void edit(const Oscillators::OscList& list);
    // Replaces those with these ids and appends the others. All waves begin anew.
    void put(const std::vector<Oscillators::Oscillator>& oscillators);

    // "all" selects every one; any other selection leaves one selected.
    void select(const SelectType& which);
    // Exactly these, as far as they are there.
    void select(const std::vector<OscId>& ids);
    // An id is that oscillator, "selected" every selected one, "up" and "down" the neighbour of the first selected one.
    // "all" with toggle toggles each by itself. One that stops sends its stop value.
    void changePlaying(const SelectType& which, const OnOffToggle& how);
    // Other than for playing, an id whose oscillator is selected stands for all selected ones, and "up" and "down" for
    // all: deliberate, programs rely on both. What the value does: changedSpeed.
    void changeSpeed(const SelectType& which, const RelativeFixedValue& value);

    // Posts the values that have come from the clock to the window.
    void showValues();

    // Presets, by name.

    // What cannot be read is reported and changes nothing.
    void loadPreset(const std::string& name);
    // With a list of ids only those, to be added to others. A file that cannot be written changes nothing, without a
    // word.
    void savePreset(const std::string& name, const std::vector<OscId>& ids);
    void storePreset(const std::string& name, const Oscillators::OscList& list) { presets_.store(name, list); }
    void deletePreset(const std::string& name) { presets_.remove(name); }

private:
    [[nodiscard]] std::vector<OscId> selected() const;
    [[nodiscard]] int firstSelected() const; // -1: none
    // Tells the engine of what plays, and how fast, in the new list; false when it differs in more.
    [[nodiscard]] bool changeMotion(const Oscillators::OscList& list);
    void install(); // what the list has become as a whole
    void tellWindow() const;

    const QelIF& qel_;
    MidiEngine::MidiEngine& engine_;
    Component::SectionPresets<Oscillators::OscList, std::vector<OscId>> presets_;
    Oscillators::OscList list_;
    bool isChanged_ = false; // since it was read as a whole
    Oscillators::OscillatorNotices notices_;
};

} // namespace Backend
