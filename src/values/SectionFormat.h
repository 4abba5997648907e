// What those sections of a program have in common that may stand for a preset.
#pragma once

#include "values/ElementFormat.h"

#include <iosfwd>
#include <string_view>
#include <vector>

// A section with the attributes "preset", a file of that folder, and "merge", which `mergeMeaning` explains.
[[nodiscard]] ElementFormat sectionFormat(std::string_view name, std::string_view meaning,
                                          std::string_view presetFolder, std::string_view mergeMeaning,
                                          std::vector<ElementFormat> children);

// The section as nothing but the name of its preset, behind `depth` tabs.
void writeSectionReference(std::ostream& out, int depth, std::string_view name, std::string_view preset);
