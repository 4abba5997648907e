// Reading the attributes of an XML element by their descriptions.
#pragma once

#include "platform/XmlDocument.h"
#include "values/AttributeFormat.h"
#include "values/Cell.h"
#include "values/Fraction.h"
#include "values/Key.h"
#include "values/MidiMessage.h"
#include "values/Note.h"
#include "values/RelativeFixedValue.h"

#include <cstdint>
#include <string>

// Each gives the value of the attribute that the format names, or the format's default when it is absent or cannot be
// read. Numbers out of range are clamped only if the format says so.

[[nodiscard]] bool readBoolean(const Platform::XmlElement& element, const AttributeFormat& format);
// The number with which the text begins.
[[nodiscard]] std::int32_t readInteger(const Platform::XmlElement& element, const AttributeFormat& format);
// Kinds note, optionalNote (empty: no note) and pitch (empty: no note).
[[nodiscard]] Note readNote(const Platform::XmlElement& element, const AttributeFormat& format);
[[nodiscard]] RelativeFixedValue readRelativeFixed(const Platform::XmlElement& element, const AttributeFormat& format);
[[nodiscard]] Fraction readFraction(const Platform::XmlElement& element, const AttributeFormat& format);
// The place of the word in the list; the default must be one of the words.
[[nodiscard]] std::int32_t readWord(const Platform::XmlElement& element, const AttributeFormat& format);
[[nodiscard]] Cell readCell(const Platform::XmlElement& element, const AttributeFormat& format);
[[nodiscard]] Backend::MidiEngine::MidiMessage readMidiEvent(const Platform::XmlElement& element,
                                                             const AttributeFormat& format);
// An unknown name is a key that is never pressed, not the default.
[[nodiscard]] Key readKey(const Platform::XmlElement& element, const AttributeFormat& format);
// The text itself, of any kind: for values whose own constructor reads it (SelectType, OnOffToggle ...).
[[nodiscard]] std::string readText(const Platform::XmlElement& element, const AttributeFormat& format);
