// One section of a program, as loading and saving see it.
#pragma once

#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <functional>
#include <iosfwd>
#include <string_view>

namespace Backend {

// What programs ask of a section; one line in QelBackend makes a section part of programs. [backend]
struct ProgramPart {
    std::string_view element;
    // What the section is in a program that does not have it.
    std::function<void()> setDefault;
    // Reads the section's element by its "merge" and "preset".
    std::function<void(const Platform::XmlElement& section)> read;
    // Writes the element at that depth. With `allowReference` the name of its preset may stand for what the preset
    // holds, too.
    std::function<void(std::ostream& out, int depth, bool allowReference)> write;

    // Of any section that has these three operations; it outlives the part.
    template <typename Section> static ProgramPart of(const ElementFormat& format, Section& section) {
        return {format.name, [&section] { section.setDefault(); },
                [&section](const Platform::XmlElement& element) { section.read(element); },
                [&section](std::ostream& out, int depth, bool allowReference) {
                    section.write(out, depth, allowReference);
                }};
    }
};

} // namespace Backend
