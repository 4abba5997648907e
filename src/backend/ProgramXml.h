// The elements of program and bank files.
#pragma once

#include "backend/Program.h"
#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

#include <filesystem>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace Backend {

// The element "Program" and all below it.
[[nodiscard]] const ElementFormat& programFormat();

// The roots of the files that hold programs: "ProgramFile", "QelProgramFile", "Bank".
[[nodiscard]] const std::vector<ElementFormat>& programFileFormats();

// Reads a program; its sections may stand in any order. Unreadable values take their defaults.
[[nodiscard]] Program readProgram(Platform::XmlElement element);
// Begins the element with all its attributes; the sections and end() are the caller's. `out`: the writer's stream.
void beginProgram(XmlWriter& xml, std::ostream& out, const Program& program);

// Texts with exactly one program: a program file (root "ProgramFile") and a program for exchange ("QelProgramFile").
[[nodiscard]] Platform::Result<Program> readProgramFile(const std::filesystem::path& file);
[[nodiscard]] Platform::Result<Program> readExchangedProgram(std::string_view text);

} // namespace Backend
