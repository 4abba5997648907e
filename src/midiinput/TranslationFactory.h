// Makes translations from XML elements and keywords, and says which there are.
#pragma once

#include "midiinput/Translation.h"
#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <memory>
#include <string>
#include <string_view>

namespace Backend::MidiInput::TranslationManagement {

// A translation from an element that holds its condition as an attribute and, as its first child, the element of the
// translation itself, whose name is the keyword, exactly. Null for an unknown keyword and without a child. The
// element's own name is not looked at.
[[nodiscard]] std::unique_ptr<Translation> createTranslation(const Platform::XmlElement& element);
// A translation that is always executed, with default settings. Null for an unknown keyword.
[[nodiscard]] std::unique_ptr<Translation> createDefaultTranslation(std::string_view keyword);

// The translation of an XML text, its condition included; a text that is no element of one is a fault.
[[nodiscard]] Platform::Result<std::unique_ptr<Translation>> readTranslation(const std::string& xml);

// Implemented by what offers a choice of translations.
class TranslationEnumerator {
public:
    virtual ~TranslationEnumerator() = default;
    virtual void addTranslation(std::string_view keyword, std::string_view displayName) = 0;
};
// Calls the enumerator for each translation that may be offered, in the order of lists.
void enumerateTranslations(TranslationEnumerator& enumerator);

// The element "Translation" with all that it may hold.
[[nodiscard]] const ElementFormat& translationFormat();
// That element, with its condition, behind `depth` tabs.
void writeTranslation(std::ostream& out, int depth, const Translation& translation);

} // namespace Backend::MidiInput::TranslationManagement
