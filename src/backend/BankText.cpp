#include "backend/BankText.h"

#include "platform/XmlDocument.h"

#include <algorithm>
#include <utility>

namespace Backend {

using Platform::Fault;
using Platform::Result;
using Platform::XmlSpan;

namespace {

constexpr const char* emptyName = "Empty";
constexpr std::string_view emptySlot = "<Program name=\"Empty\">\n</Program>\n";

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// The "name" in a start tag that has been checked.
std::string nameIn(std::string_view startTag) {
    std::string tag(startTag);
    if (tag[tag.size() - 2] != '/') {
        tag.insert(tag.size() - 1, "/");
    }
    const Result<Platform::XmlElement> parsed = Platform::parseXml(tag, {});
    const std::string* const name = parsed ? parsed.value().attribute("name") : nullptr;
    return name != nullptr ? *name : std::string();
}

} // namespace

Result<BankText> BankText::of(std::string text, const std::string& file) {
    BankText bank(std::move(text), file);
    const Result<Platform::CheckedXml> checked = Platform::checkXml(bank.text_, file);
    if (!checked) {
        return checked.fault();
    }
    const Platform::CheckedXml& xml = checked.value();
    if (xml.rootName != "Bank") {
        return Fault{file, xml.startLines.front(),
                     "the root element is <" + std::string(xml.rootName) + ">, not <Bank>"};
    }
    for (const Platform::XmlTopElement& each : xml.topElements) {
        if (each.name == "Program") {
            const XmlSpan tag = each.startTag;
            bank.slots_.push_back(
                {each.element, nameIn(std::string_view(bank.text_).substr(tag.begin, tag.end - tag.begin))});
        }
    }
    if (bank.slots_.empty()) {
        return Fault{file, xml.startLines.front(), "there is no <Program>"};
    }
    bank.endTag_ = xml.rootEndTag;
    return bank;
}

std::string_view BankText::program(std::size_t slot) const {
    const XmlSpan element = slots_[slot].element;
    return std::string_view(text_).substr(element.begin, element.end - element.begin);
}

XmlSpan BankText::linesOf(XmlSpan element) const {
    XmlSpan lines = element;
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
    if (first == std::string::npos || first == 0 || text_[first - 1] != '\r') {
        return std::string(lines);
    }
    std::string text;
    for (const char c : lines) {
        text += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return text;
}

Result<BankText> BankText::withText(std::string text) const {
    // The least text that could have more parts than are read is looked at anew.
    constexpr std::size_t large = Platform::maxXmlParts * 4;
    if (text.size() > large) {
        if (const Result<Platform::CheckedXml> checked = Platform::checkXml(text, file_); !checked) {
            return checked.fault();
        }
    }
    return BankText(std::move(text), file_);
}

Result<BankText> BankText::withProgram(std::size_t slot, std::string_view program) const {
    if (slot >= slots_.size()) {
        return Fault{file_, 0,
                     "there is no slot " + std::to_string(slot) + ", the bank has " + std::to_string(slots_.size()) +
                         " programs"};
    }
    const XmlSpan lines = linesOf(slots_[slot].element);
    const bool beginsLine = lines.begin == 0 || text_[lines.begin - 1] == '\n';
    constexpr std::string_view before = "<Bank>";
    const std::string piece = withLineEnds((beginsLine ? "" : "\n") + std::string(program));
    const Result<BankText> alone = of(std::string(before) + piece + "</Bank>", file_);
    if (!alone) {
        return alone.fault();
    }
    if (alone.value().size() != 1) {
        return Fault{file_, 0, "the bank cannot be changed without harm to other programs"};
    }
    std::string text;
    text.reserve(text_.size() + piece.size());
    text.append(text_, 0, lines.begin).append(piece).append(text_, lines.end);
    Result<BankText> changed = withText(std::move(text));
    if (changed) {
        const std::size_t grown = lines.begin + piece.size() - lines.end; // wraps around when it has become less
        const auto moved = [grown](XmlSpan span) { return XmlSpan{span.begin + grown, span.end + grown}; };
        std::vector<Slot>& slots = changed.value().slots_;
        slots = slots_;
        slots[slot] = alone.value().slots_.front();
        slots[slot].element.begin += lines.begin - before.size();
        slots[slot].element.end += lines.begin - before.size();
        std::for_each(slots.begin() + static_cast<std::ptrdiff_t>(slot) + 1, slots.end(),
                      [&](Slot& each) { each.element = moved(each.element); });
        changed.value().endTag_ = moved(endTag_);
    }
    return changed;
}

Result<BankText> BankText::withSize(std::size_t size) const {
    const std::size_t cut = size < slots_.size() ? linesOf(slots_[size].element).begin : linesOf(endTag_).begin;
    const std::string lineEnd = withLineEnds("\n");
    const std::string slotText = withLineEnds(emptySlot);
    if (size > slots_.size() && size - slots_.size() > Platform::maxXmlBytes / slotText.size()) {
        return Fault{file_, 0, "a bank of " + std::to_string(size) + " programs would be too big"};
    }
    std::vector<Slot> slots(slots_.begin(),
                            slots_.begin() + static_cast<std::ptrdiff_t>(std::min(size, slots_.size())));
    std::string text = text_.substr(0, cut);
    if (cut > 0 && text_[cut - 1] != '\n') {
        text += lineEnd;
    }
    while (slots.size() < size) {
        slots.push_back({{text.size(), text.size() + slotText.size() - lineEnd.size()}, emptyName});
        text += slotText;
    }
    const XmlSpan endTag{text.size(), text.size() + std::string_view("</Bank>").size()};
    text.append("</Bank>").append(lineEnd).append(text_, linesOf(endTag_).end);
    Result<BankText> changed = withText(std::move(text));
    if (changed) {
        changed.value().slots_ = std::move(slots);
        changed.value().endTag_ = endTag;
    }
    return changed;
}

} // namespace Backend
