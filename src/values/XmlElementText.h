// Elements that nobody here knows, written again as they were read.
#pragma once

#include "platform/XmlDocument.h"

#include <iosfwd>

// Writes an element with all below it, laid out as our files are. Text stands before the children of its element; text
// of nothing but white space is layout and not kept.
void writeElement(std::ostream& out, int depth, const Platform::XmlElement& element);
