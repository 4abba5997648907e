#include "midiinput/MidiEventConfiguration.h"

#include "midiinput/TranslationFactory.h"

#include <algorithm>
#include <sstream>

namespace Backend::MidiInput {

using TranslationManagement::Translation;

namespace {

// All that there is to a translation but its facade.
std::string textOf(const std::unique_ptr<Translation>& translation) {
    std::ostringstream text;
    if (translation) {
        TranslationManagement::writeTranslation(text, 0, *translation);
    }
    return text.str();
}

} // namespace

MidiEventConfiguration::MidiEventConfiguration(const MidiEventConfiguration& other) : event(other.event) {
    translations.reserve(other.translations.size());
    for (const auto& translation : other.translations) {
        translations.push_back(translation ? translation->clone() : nullptr);
    }
}

MidiEventConfiguration& MidiEventConfiguration::operator=(const MidiEventConfiguration& other) {
    return *this = MidiEventConfiguration(other);
}

bool MidiEventConfiguration::isDefault() const {
    constexpr std::size_t most = 2;
    if (translations.empty()) {
        return true;
    }
    if (translations.size() > most || !translations.front() || !translations.front()->isDefault()) {
        return false;
    }
    return translations.size() == 1 || (translations[1] && translations[1]->getName() == "DoNothing");
}

bool MidiEventConfiguration::onlyPlays() const {
    return std::all_of(translations.begin(), translations.end(),
                       [](const auto& translation) { return !translation || translation->onlyPlays(); });
}

void MidiEventConfiguration::setQel(QelIF* qel) const {
    for (const auto& translation : translations) {
        if (translation) {
            translation->setQel(qel);
        }
    }
}

std::optional<MidiEventConfiguration> MidiEventConfiguration::activePart() const {
    return isDefault() ? std::nullopt : std::optional(*this);
}

bool operator==(const MidiEventConfiguration& a, const MidiEventConfiguration& b) {
    return a.event == b.event &&
           std::equal(a.translations.begin(), a.translations.end(), b.translations.begin(), b.translations.end(),
                      [](const auto& one, const auto& other) { return textOf(one) == textOf(other); });
}

} // namespace Backend::MidiInput
