// The lines of version-2 files: docs/version-2-files.md has them all.
#pragma once

#include "platform/Result.h"
#include "platform/XmlDocument.h"

#include <string>
#include <string_view>
#include <vector>

namespace Backend {

// The fields of a line: a letter that says what it is, then values, each empty where it is not set.
struct Version2Line {
    int number = 0; // in the file, from 1
    char kind = 0;
    std::vector<std::string> fields; // behind the letter; UTF-8

    // The field at that place; empty where the line has ended before.
    [[nodiscard]] std::string_view field(std::size_t place) const;
};

// Cuts a text into its lines, without comments and blank lines. Lines that are not UTF-8 are taken for Latin-1.
[[nodiscard]] std::vector<Version2Line> version2Lines(std::string_view text);

// The section that lines of this kind belong to; empty for other kinds.
[[nodiscard]] std::string_view sectionOfLine(char kind);

// Puts what a line says into its section element. A fault, without file, when the line is not understood: then the
// section stays as it was.
[[nodiscard]] Platform::Outcome addLine(const Version2Line& line, Platform::XmlElement& section);

// What version 2 meant otherwise: a control that bends the pitch had the range 0..127 with its middle at 63.
void convertControls(Platform::XmlElement& section);

} // namespace Backend
