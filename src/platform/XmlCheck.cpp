#include "platform/XmlCheck.h"

#include "platform/Utf8.h"
#include "platform/XmlCharacters.h"
#include "platform/XmlDocument.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Platform {
namespace {

constexpr bool isBlank(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// One-byte characters, by what a pass over them asks.
struct CharacterClasses {
    std::array<bool, 256> isPlain{}; // without any meaning, wherever it stands
    std::array<bool, 256> isName{};  // part of a name, though not always its first character
};

constexpr CharacterClasses classes = [] {
    CharacterClasses made;
    for (unsigned c = 0x20; c < 0x7F; ++c) {
        made.isPlain[c] = std::string_view("<&]\"'-?").find(static_cast<char>(c)) == std::string_view::npos;
        made.isName[c] = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
                         c == '-' || c == '.';
    }
    return made;
}();

constexpr bool isPlain(char c) noexcept {
    return classes.isPlain[static_cast<unsigned char>(c)];
}
constexpr bool isOneByteOfName(char c) noexcept {
    return classes.isName[static_cast<unsigned char>(c)];
}

// One pass over a document. Each step returns false after it has noted the reason; the line is where it stands.
class Checker final {
public:
    explicit Checker(std::string_view text) noexcept : text_(text) {}

    bool checkDocument();
    const char* reason() const noexcept { return reason_; }
    int line() const noexcept { return line_; }
    // What has been found, to be taken once.
    CheckedXml& found() noexcept { return found_; }

private:
    bool fail(const char* reason) noexcept {
        reason_ = reason;
        return false;
    }
    // Of all that costs memory, or parts what does.
    bool countPart() noexcept {
        return parts_++ < maxXmlParts || fail("more than a million elements, attributes and the like");
    }
    bool isAtEnd() const noexcept { return at_ == text_.size(); }
    bool isAt(char expected) const noexcept { return !isAtEnd() && text_[at_] == expected; }
    bool startsWith(std::string_view expected) const noexcept { return text_.substr(at_).starts_with(expected); }
    // Passes over characters already looked at that hold no line end.
    bool take(std::string_view expected) noexcept {
        const bool found = startsWith(expected);
        at_ += found ? expected.size() : 0;
        return found;
    }
    bool take(char expected) noexcept {
        const bool found = isAt(expected);
        at_ += found ? 1 : 0;
        return found;
    }
    void takePlain() noexcept;  // characters without any meaning, as far as they go: most of a document
    bool takeBlanks() noexcept; // true when there was any
    bool takeChar() noexcept;   // any one character that XML allows
    bool takeName(std::string_view& name) noexcept;
    bool takeReference() noexcept;
    bool takeUpTo(std::string_view end, const char* missing) noexcept;

    bool checkDeclaration() noexcept;
    bool checkDeclarationPart(std::string_view part, std::string_view& value) noexcept;
    bool checkComment() noexcept;
    bool checkInstruction() noexcept;
    bool checkText() noexcept;
    bool checkStartTag();
    bool checkAttribute();
    bool checkEndTag() noexcept;
    bool checkMarkup();

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
    const char* reason_ = "";
    CheckedXml found_;
    std::size_t parts_ = 0;
    std::vector<std::string_view> openElements_;
    std::vector<std::string_view> attributes_; // of the tag at hand
};

void Checker::takePlain() noexcept {
    std::size_t at = at_;
    for (;; ++at) {
        while (at < text_.size() && isPlain(text_[at])) {
            ++at;
        }
        if (at == text_.size() || text_[at] != '\n') {
            break;
        }
        ++line_;
    }
    at_ = at;
}

bool Checker::takeBlanks() noexcept {
    const std::size_t start = at_;
    while (!isAtEnd() && isBlank(text_[at_])) {
        takeChar();
    }
    return at_ != start;
}

bool Checker::takeChar() noexcept {
    const char first = text_[at_];
    if (first >= 0x20 && first < 0x7F) {
        ++at_;
        return true;
    }
    const CodePoint point = firstCodePoint(text_.substr(at_));
    if (point.length == 0) {
        return fail("is not UTF-8");
    }
    if (!isXmlChar(point.value)) {
        return fail("a character that XML does not allow");
    }
    at_ += point.length;
    // A carriage return counts when no line feed follows, so that all three kinds of line ends count once.
    if (first == '\n' || (first == '\r' && (isAtEnd() || text_[at_] != '\n'))) {
        ++line_;
    }
    return true;
}

bool Checker::takeName(std::string_view& name) noexcept {
    const std::size_t start = at_;
    while (!isAtEnd()) {
        if (at_ != start && isOneByteOfName(text_[at_])) {
            ++at_;
            continue;
        }
        if (at_ != start && static_cast<unsigned char>(text_[at_]) < 0x80) {
            break;
        }
        const CodePoint point = firstCodePoint(text_.substr(at_));
        if (point.length == 0) {
            return fail("is not UTF-8");
        }
        if (!(at_ == start ? isXmlNameStart(point.value) : isXmlNameChar(point.value))) {
            break;
        }
        at_ += point.length;
    }
    if (at_ == start) {
        return fail("a name is missing");
    }
    if (isAt(':')) {
        return fail("names with a colon (namespaces) are not supported");
    }
    name = text_.substr(start, at_ - start);
    return true;
}

bool Checker::takeReference() noexcept {
    // At "&".
    for (const std::string_view known : {"&lt;", "&gt;", "&amp;", "&apos;", "&quot;"}) {
        if (take(known)) {
            return true;
        }
    }
    if (!take("&#")) {
        return fail("\"&\" without a known entity behind it");
    }
    const unsigned base = take("x") ? 16 : 10;
    char32_t value = 0;
    bool hasDigits = false;
    for (; !isAtEnd() && text_[at_] != ';'; ++at_) {
        const char c = text_[at_];
        const char small = static_cast<char>(c | 0x20);
        const bool isDigit = c >= '0' && c <= '9';
        if (!isDigit && !(base == 16 && small >= 'a' && small <= 'f')) {
            return fail("a character reference that is not understood");
        }
        hasDigits = true;
        value =
            std::min<char32_t>(value * base + static_cast<unsigned>(isDigit ? c - '0' : small - 'a' + 10), 0x110000);
    }
    if (!hasDigits || !take(';')) {
        return fail("a character reference that is not understood");
    }
    return isXmlChar(value) || fail("a reference to a character that XML does not allow");
}

bool Checker::takeUpTo(std::string_view end, const char* missing) noexcept {
    for (takePlain(); !isAtEnd(); takePlain()) {
        if (take(end)) {
            return true;
        }
        if (!takeChar()) {
            return false;
        }
    }
    return fail(missing);
}

bool Checker::checkDeclarationPart(std::string_view part, std::string_view& value) noexcept {
    take(part);
    takeBlanks();
    if (!take('=')) {
        return fail("an XML declaration that is not understood");
    }
    takeBlanks();
    const char quote = isAt('\'') ? '\'' : '"';
    if (!take(quote)) {
        return fail("an XML declaration that is not understood");
    }
    const std::size_t start = at_;
    if (!takeUpTo({&quote, 1}, "an XML declaration that is not understood")) {
        return false;
    }
    value = text_.substr(start, at_ - start - 1);
    return true;
}

bool Checker::checkDeclaration() noexcept {
    // At "<?xml" and a blank.
    take("<?xml");
    takeBlanks();
    std::string_view version;
    std::string_view encoding = "utf-8";
    std::string_view standalone = "no";
    if (!startsWith("version")) {
        return fail("an XML declaration without version");
    }
    if (!checkDeclarationPart("version", version)) {
        return false;
    }
    bool blanks = takeBlanks();
    if (blanks && startsWith("encoding")) {
        if (!checkDeclarationPart("encoding", encoding)) {
            return false;
        }
        blanks = takeBlanks();
    }
    if (blanks && startsWith("standalone")) {
        if (!checkDeclarationPart("standalone", standalone)) {
            return false;
        }
        takeBlanks();
    }
    const bool isVersion1 =
        version.size() > 2 && version.starts_with("1.") &&
        std::all_of(version.begin() + 2, version.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!take("?>") || !isVersion1 || (standalone != "yes" && standalone != "no")) {
        return fail("an XML declaration that is not understood");
    }
    const auto isSameLetter = [](char a, char b) { return a == b || (b >= 'a' && b <= 'z' && a == b - 'a' + 'A'); };
    constexpr std::string_view utf8 = "utf-8";
    return std::equal(encoding.begin(), encoding.end(), utf8.begin(), utf8.end(), isSameLetter) ||
           fail("an encoding other than UTF-8");
}

bool Checker::checkComment() noexcept {
    take("<!--");
    return countPart() && takeUpTo("--", "a comment without its end") && (take('>') || fail("\"--\" in a comment"));
}

bool Checker::checkInstruction() noexcept {
    take("<?");
    std::string_view target;
    if (!countPart() || !takeName(target)) {
        return false;
    }
    if (target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' && (target[2] | 0x20) == 'l') {
        return fail("an XML declaration that is not at the start");
    }
    if (!startsWith("?>") && !(!isAtEnd() && isBlank(text_[at_]))) {
        return fail("a processing instruction that is not understood");
    }
    return takeUpTo("?>", "a processing instruction without its end");
}

// At a character that is not "<".
bool Checker::checkText() noexcept {
    if (openElements_.empty()) {
        return takeBlanks() || (takeChar() && fail("text outside the root element"));
    }
    if (isAt('&')) {
        return takeReference();
    }
    if (startsWith("]]>")) {
        return fail("\"]]>\" in text");
    }
    if (!takeChar()) {
        return false;
    }
    takePlain();
    return true;
}

bool Checker::checkAttribute() {
    std::string_view name;
    if (!takeName(name)) {
        return false;
    }
    if (name == "xmlns") {
        return fail("namespaces are not supported");
    }
    if (std::find(attributes_.begin(), attributes_.end(), name) != attributes_.end()) {
        return fail("an attribute that is there twice");
    }
    if (attributes_.size() == maxXmlAttributes) {
        return fail("too many attributes");
    }
    if (!countPart()) {
        return false;
    }
    attributes_.push_back(name);
    takeBlanks();
    if (!take('=')) {
        return fail("an attribute without its value");
    }
    takeBlanks();
    const char quote = isAt('\'') ? '\'' : '"';
    if (!take(quote)) {
        return fail("an attribute whose value is not quoted");
    }
    for (;;) {
        takePlain();
        if (isAtEnd()) {
            return fail("an attribute without its closing quote");
        }
        if (take(quote)) {
            return true;
        }
        if (isAt('<')) {
            return fail("\"<\" in an attribute");
        }
        if (!(isAt('&') ? takeReference() : takeChar())) {
            return false;
        }
    }
}

bool Checker::checkStartTag() {
    if (openElements_.empty() && !found_.startLines.empty()) {
        return fail("a second root element");
    }
    if (openElements_.size() == static_cast<std::size_t>(maxXmlDepth)) {
        return fail("elements nested too deep");
    }
    if (!countPart()) {
        return false;
    }
    found_.startLines.push_back(line_);
    const std::size_t begin = at_;
    take('<');
    std::string_view name;
    if (!takeName(name)) {
        return false;
    }
    attributes_.clear();
    for (;;) {
        const bool blanks = takeBlanks();
        const bool isWhole = take("/>");
        if (isWhole || take('>')) {
            if (openElements_.empty()) {
                found_.rootName = name;
            } else if (openElements_.size() == 1) {
                found_.topElements.push_back({name, {begin, at_}, {begin, at_}});
            }
            if (!isWhole) {
                openElements_.push_back(name);
            }
            return true;
        }
        if (isAtEnd()) {
            return fail("a tag without its end");
        }
        if (!blanks) {
            return fail("a character that does not belong into a tag");
        }
        if (!checkAttribute()) {
            return false;
        }
    }
}

bool Checker::checkEndTag() noexcept {
    const std::size_t begin = at_;
    take("</");
    std::string_view name;
    if (!takeName(name)) {
        return false;
    }
    if (openElements_.empty() || openElements_.back() != name) {
        return fail("an end tag without its start tag");
    }
    openElements_.pop_back();
    takeBlanks();
    if (!take('>')) {
        return fail("a tag without its end");
    }
    if (openElements_.empty()) {
        found_.rootEndTag = {begin, at_};
    } else if (openElements_.size() == 1) {
        found_.topElements.back().element.end = at_;
    }
    return true;
}

// At "<".
bool Checker::checkMarkup() {
    const char second = at_ + 1 < text_.size() ? text_[at_ + 1] : '\0';
    if (second != '!' && second != '?') {
        return second == '/' ? checkEndTag() : checkStartTag();
    }
    if (startsWith("<!--")) {
        return checkComment();
    }
    if (startsWith("<!DOCTYPE")) {
        return fail("document type declarations are not supported");
    }
    if (startsWith("<![CDATA[") && !openElements_.empty()) {
        return countPart() && takeUpTo("]]>", "a CDATA section without its end");
    }
    return second == '?' ? checkInstruction() : fail("a declaration that does not belong here");
}

bool Checker::checkDocument() {
    take("\xEF\xBB\xBF");
    if (startsWith("<?xml") && at_ + 5 < text_.size() && isBlank(text_[at_ + 5]) && !checkDeclaration()) {
        return false;
    }
    found_.body = text_.substr(at_);
    while (!isAtEnd()) {
        if (!(isAt('<') ? checkMarkup() : checkText())) {
            return false;
        }
    }
    if (found_.startLines.empty()) {
        return fail("no root element");
    }
    return openElements_.empty() || fail("the file ends inside an element");
}

} // namespace

Result<CheckedXml> checkXml(std::string_view text, const std::string& name) {
    if (text.size() > maxXmlBytes) {
        return Fault{name, 0, "is bigger than " + std::to_string(maxXmlBytes) + " bytes"};
    }
    Checker checker(text);
    if (!checker.checkDocument()) {
        return Fault{name, checker.line(), checker.reason()};
    }
    return std::move(checker.found());
}

} // namespace Platform
