// Writing XML the way all our files are laid out: an element a line, a tab a level.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

// "<", ">", "&", "'" and the double quote as entities, every other byte as it is.
[[nodiscard]] std::string escapeXml(std::string_view text);

// Writes elements to a stream; whether the stream takes them is the caller's to check.
class XmlWriter final {
public:
    // The stream outlives the writer. `depth`: tabs before the outermost element.
    explicit XmlWriter(std::ostream& out, int depth = 0) : out_(out), depth_(depth) {}
    XmlWriter(const XmlWriter&) = delete;
    XmlWriter& operator=(const XmlWriter&) = delete;

    // The line that every file begins with.
    void declaration();

    // Starts an element; its attributes follow.
    XmlWriter& begin(std::string_view name);
    // Only directly after begin or another attribute. Values are escaped here.
    XmlWriter& attribute(std::string_view name, std::string_view value);
    XmlWriter& attribute(std::string_view name, const char* value) { return attribute(name, std::string_view(value)); }
    XmlWriter& attribute(std::string_view name, bool value);
    XmlWriter& attribute(std::string_view name, std::int32_t value);
    XmlWriter& attribute(std::string_view name, const XmlItem& value);
    // Closes the start tag, so that the element gets an end tag on a line of its own even without children.
    XmlWriter& content();
    // Ends the element begun last: "/>" when it has no content.
    void end();
    // Ends the element whose attributes have just been written with that text, escaped here, all on one line.
    void endWithText(std::string_view text);

    // Where the next element goes, and behind how many tabs, for what writes itself; after content() or end().
    [[nodiscard]] std::ostream& stream() { return out_; }
    [[nodiscard]] int depth() const { return depth_ + static_cast<int>(open_.size()); }

private:
    void closeStartTag();
    void indent();

    std::ostream& out_;
    int depth_;
    bool startTagOpen_ = false;
    std::vector<std::string> open_;
};
