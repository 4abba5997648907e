// The attributes by which files name the event that a control or an axis sends.
#pragma once

#include "input/ValueEvent.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

namespace Backend {

// An element "Function" with "midiEvent", "output", "channel" and "zone".
[[nodiscard]] ElementFormat valueEventFormat();
// Anything but an event of the right form is no event; the routing is clamped to what there can be, -1: the default.
[[nodiscard]] ValueEvent readValueEvent(const Platform::XmlElement& element);
// Adds the attributes to the element that has been begun.
void writeValueEvent(XmlWriter& xml, const ValueEvent& event);

} // namespace Backend
