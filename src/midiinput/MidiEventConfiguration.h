// What one kind of incoming message does.
#pragma once

#include "midiinput/MidiEvent.h"
#include "midiinput/Translation.h"

#include <memory>
#include <optional>
#include <vector>

namespace Backend::MidiInput {

// Copies are deep.
struct MidiEventConfiguration {
    using Translations = std::vector<std::unique_ptr<TranslationManagement::Translation>>;

    MidiEventConfiguration() = default;
    explicit MidiEventConfiguration(const MidiEvent& which) : event(which) {}
    MidiEventConfiguration(const MidiEventConfiguration& other);
    MidiEventConfiguration(MidiEventConfiguration&&) noexcept = default;
    MidiEventConfiguration& operator=(const MidiEventConfiguration& other);
    MidiEventConfiguration& operator=(MidiEventConfiguration&&) noexcept = default;
    ~MidiEventConfiguration() = default;

    // Not worth saving: no translation, or one that is the default, with or without a DoNothing behind it.
    [[nodiscard]] bool isDefault() const;
    // None of its translations does anything but play.
    [[nodiscard]] bool onlyPlays() const;
    // Gives its translations the facade to act on.
    void setQel(QelIF* qel) const;

    // Nothing when it is the default, else itself.
    [[nodiscard]] std::optional<MidiEventConfiguration> activePart() const;
    // The same event with the same translations.
    friend bool operator==(const MidiEventConfiguration& a, const MidiEventConfiguration& b);

    MidiEvent event{};
    Translations translations{}; // in the order of execution; null for one that could not be read
};

} // namespace Backend::MidiInput
