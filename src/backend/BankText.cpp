#include "backend/BankText.h"

#include "platform/XmlCheck.h"
#include "platform/XmlDocument.h"

#include <algorithm>
#include <utility>

namespace Backend {

using Platform::Fault;
using Platform::Result;

namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::string_view emptySlot = "<Program name=\"Empty\">\n</Program>\n";

// The next piece of markup in a well-formed document.
struct Markup {
    enum class Kind { startTag, emptyElement, endTag, other };
    Kind kind = Kind::other;
    std::string_view name; // of tags
    std::size_t begin = 0;
    std::size_t end = 0;
};

std::size_t endOfTag(std::string_view text, std::size_t at) {
    char quote = 0;
    for (; text[at] != '>' || quote != 0; ++at) {
        if (quote != 0) {
            quote = text[at] == quote ? '\0' : quote;
        } else if (text[at] == '"' || text[at] == '\'') {
            quote = text[at];
        }
    }
    return at + 1;
}

std::size_t behind(std::string_view text, std::string_view end, std::size_t from) {
    return text.find(end, from) + end.size();
}

// From `at` on; at the end of the text: a piece of no length.
Markup nextMarkup(std::string_view text, std::size_t at) {
    Markup piece;
    piece.begin = text.find('<', at);
    if (piece.begin == npos) {
        piece.begin = piece.end = text.size();
        return piece;
    }
    const std::string_view rest = text.substr(piece.begin);
    if (rest.starts_with("<!--")) {
        piece.end = behind(text, "-->", piece.begin + 4);
    } else if (rest.starts_with("<![CDATA[")) {
        piece.end = behind(text, "]]>", piece.begin);
    } else if (rest.starts_with("<?")) {
        piece.end = behind(text, "?>", piece.begin);
    } else {
        const bool closes = rest.starts_with("</");
        const std::size_t nameAt = closes ? 2 : 1;
        piece.end = endOfTag(text, piece.begin);
        piece.name = rest.substr(nameAt, rest.find_first_of(" \t\r\n/>", nameAt) - nameAt);
        piece.kind = closes                       ? Markup::Kind::endTag
                     : text[piece.end - 2] == '/' ? Markup::Kind::emptyElement
                                                  : Markup::Kind::startTag;
    }
    return piece;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

} // namespace

Result<BankText> BankText::of(std::string text, const std::string& name) {
    const Result<Platform::CheckedXml> checked = Platform::checkXml(text, name);
    if (!checked) {
        return checked.fault();
    }
    const int rootLine = checked.value().startLines.front();
    BankText bank(std::move(text), name);
    bank.findElements();
    if (bank.rootName_ != "Bank") {
        return Fault{name, rootLine, "the root element is <" + bank.rootName_ + ">, not <Bank>"};
    }
    if (bank.programs_.empty()) {
        return Fault{name, rootLine, "there is no <Program>"};
    }
    return bank;
}

void BankText::findElements() {
    int depth = 0;
    std::size_t begin = npos; // of the program that is open
    for (Markup piece = nextMarkup(text_, 0); piece.begin != piece.end; piece = nextMarkup(text_, piece.end)) {
        const bool isProgram = depth == 1 && piece.name == "Program";
        switch (piece.kind) {
        case Markup::Kind::startTag:
            rootName_ = depth == 0 ? piece.name : std::string_view(rootName_);
            begin = isProgram ? piece.begin : begin;
            ++depth;
            break;
        case Markup::Kind::emptyElement:
            rootName_ = depth == 0 ? piece.name : std::string_view(rootName_);
            if (isProgram) {
                programs_.push_back({piece.begin, piece.end});
            }
            break;
        case Markup::Kind::endTag:
            --depth;
            if (depth == 1 && begin != npos) {
                programs_.push_back({begin, piece.end});
                begin = npos;
            } else if (depth == 0) {
                endTag_ = {piece.begin, piece.end};
            }
            break;
        case Markup::Kind::other:
            break;
        }
    }
}

std::string_view BankText::program(std::size_t slot) const {
    return std::string_view(text_).substr(programs_[slot].begin, programs_[slot].end - programs_[slot].begin);
}

BankText::Span BankText::linesOf(Span element) const {
    Span lines = element;
    while (lines.begin > 0 && isBlank(text_[lines.begin - 1])) {
        --lines.begin;
    }
    if (lines.begin > 0 && text_[lines.begin - 1] != '\n') {
        lines.begin = element.begin; // something else stands before it
    }
    std::size_t end = element.end;
    while (end < text_.size() && (isBlank(text_[end]) || text_[end] == '\r')) {
        ++end;
    }
    if (end == text_.size() || text_[end] == '\n') {
        lines.end = end == text_.size() ? end : end + 1;
    }
    return lines;
}

std::string BankText::withLineEnds(std::string_view lines) const {
    const std::size_t first = text_.find('\n');
    if (first == npos || first == 0 || text_[first - 1] != '\r') {
        return std::string(lines);
    }
    std::string text;
    for (const char c : lines) {
        text += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return text;
}

template <typename Kept>
Result<BankText> BankText::composed(std::string text, std::size_t size, const Kept& kept) const {
    // The least text that could have more elements than are read is looked at anew.
    constexpr std::size_t large = Platform::maxXmlElements * 4;
    if (text.size() > large) {
        if (const Result<Platform::CheckedXml> checked = Platform::checkXml(text, name_); !checked) {
            return checked.fault();
        }
    }
    BankText bank(std::move(text), name_);
    bank.findElements();
    bool isRight = bank.size() == size && bank.rootName_ == rootName_;
    for (std::size_t slot = 0; isRight && slot < std::min(size, programs_.size()); ++slot) {
        isRight = !kept(slot) || bank.program(slot) == program(slot);
    }
    return isRight ? Result<BankText>(std::move(bank))
                   : Fault{name_, 0, "the bank cannot be changed without harm to other programs"};
}

std::string BankText::programName(std::size_t slot) const {
    const std::string_view element = program(slot);
    std::string tag(element.substr(0, endOfTag(element, 0)));
    if (tag[tag.size() - 2] != '/') {
        tag.insert(tag.size() - 1, "/");
    }
    const Result<Platform::XmlElement> parsed = Platform::parseXml(tag, name_);
    const std::string* const programName = parsed ? parsed.value().attribute("name") : nullptr;
    return programName != nullptr ? *programName : std::string();
}

Result<BankText> BankText::withProgram(std::size_t slot, std::string_view program) const {
    if (slot >= programs_.size()) {
        return Fault{name_, 0,
                     "there is no slot " + std::to_string(slot) + ", the bank has " + std::to_string(programs_.size()) +
                         " programs"};
    }
    const Result<BankText> alone = of("<Bank>\n" + std::string(program) + "</Bank>", name_);
    if (!alone) {
        return alone.fault();
    }
    const Span lines = linesOf(programs_[slot]);
    const bool beginsLine = lines.begin == 0 || text_[lines.begin - 1] == '\n';
    return composed(text_.substr(0, lines.begin) + withLineEnds((beginsLine ? "" : "\n") + std::string(program)) +
                        text_.substr(lines.end),
                    size(), [slot](std::size_t each) { return each != slot; });
}

Result<BankText> BankText::withSize(std::size_t size) const {
    const std::size_t cut = size < programs_.size() ? linesOf(programs_[size]).begin : linesOf(endTag_).begin;
    std::string added;
    if (cut > 0 && text_[cut - 1] != '\n') {
        added += "\n";
    }
    for (std::size_t slot = programs_.size(); slot < size; ++slot) {
        added += emptySlot;
    }
    added += "</Bank>\n";
    return composed(text_.substr(0, cut) + withLineEnds(added) + text_.substr(linesOf(endTag_).end), size,
                    [](std::size_t) { return true; });
}

} // namespace Backend
