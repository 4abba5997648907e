// Elements that nobody here knows, written again as they were read.
#pragma once

#include "platform/XmlDocument.h"

#include <iosfwd>

// Writes an attribute with the blank before it; it reads as exactly the same value.
void writeAttribute(std::ostream& out, const Platform::XmlAttribute& attribute);

// Writes an element with all below it, laid out as our files are. Text beside child elements stands before them,
// without the white space around it; text of nothing but white space is layout and not kept.
void writeElement(std::ostream& out, int depth, const Platform::XmlElement& element);
