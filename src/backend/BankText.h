// The text of a bank file, cut at its programs, so that one program is exchanged and all else stays byte for byte.
#pragma once

#include "platform/Result.h"
#include "platform/XmlCheck.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Backend {

// Works on whatever is well-formed: any indentation and line ends, tags broken over lines, several programs in a line,
// comments and CDATA that look like programs. What is written in keeps each start tag of a program at the begin of a
// line and the end tag of the bank on a line of its own, with the line ends of the file.
class BankText final {
public:
    // A fault when the text is not a well-formed bank with at least one program. `name` is of the file, for faults.
    [[nodiscard]] static Platform::Result<BankText> of(std::string text, const std::string& name);

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] std::size_t size() const { return slots_.size(); } // 1 or more
    // The element of a slot, from "<" to ">".
    [[nodiscard]] std::string_view program(std::size_t slot) const;
    [[nodiscard]] const std::string& programName(std::size_t slot) const { return slots_[slot].name; }

    // The bank with `program` in that slot: lines that end with "\n". A fault when there is no such slot, or when it is
    // not exactly one program, since then other slots would be harmed.
    [[nodiscard]] Platform::Result<BankText> withProgram(std::size_t slot, std::string_view program) const;
    // The bank with its first `size` programs, 1 or more, and empty ones behind those that there are.
    [[nodiscard]] Platform::Result<BankText> withSize(std::size_t size) const;

private:
    struct Slot {
        Platform::XmlSpan element;
        std::string name;
    };

    BankText(std::string text, std::string file) : text_(std::move(text)), file_(std::move(file)) {}
    // With the white space around it that belongs to its lines, as far as nothing else stands in them.
    [[nodiscard]] Platform::XmlSpan linesOf(Platform::XmlSpan element) const;
    [[nodiscard]] std::string withLineEnds(std::string_view lines) const;
    // This bank with other text, whose slots and end tag are then the caller's to say; a fault when it is too large.
    [[nodiscard]] Platform::Result<BankText> withText(std::string text) const;

    std::string text_;
    std::string file_; // for faults
    std::vector<Slot> slots_;
    Platform::XmlSpan endTag_; // of the bank
};

} // namespace Backend
