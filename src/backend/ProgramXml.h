// Program and bank files.
#pragma once

#include "backend/Program.h"
#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <filesystem>
#include <vector>

namespace Backend {

// The element "Program" and all below it; sections that the program does not know yet stand in it unchecked.
[[nodiscard]] const ElementFormat& programFormat();

// Reads a program; its sections may stand in any order, and one that is missing has its default. Unknown elements
// are passed over and unreadable values take their defaults.
[[nodiscard]] Program readProgram(const Platform::XmlElement& element);

// Reads a program file (".prg"): the root "ProgramFile" with exactly one "Program".
[[nodiscard]] Platform::Result<Program> readProgramFile(const std::filesystem::path& file);

// Reads a bank file (".bnk"): the root "Bank" with one "Program" a slot, at least one.
[[nodiscard]] Platform::Result<std::vector<Program>> readBankFile(const std::filesystem::path& file);

} // namespace Backend
