#include "values/XmlWriter.h"

#include <cassert>
#include <ostream>
#include <utility>

std::string escapeXml(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const auto c : text) {
        switch (c) {
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '&':
            escaped += "&amp;";
            break;
        case '\'':
            escaped += "&apos;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

void XmlWriter::declaration() {
    out_ << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
}

XmlWriter& XmlWriter::begin(std::string_view name) {
    closeStartTag();
    indent();
    out_ << '<' << name;
    open_.emplace_back(name);
    startTagOpen_ = true;
    return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, std::string_view value) {
    assert(startTagOpen_);
    out_ << ' ' << name << "=\"" << escapeXml(value) << '"';
    return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, bool value) {
    return attribute(name, value ? "true" : "false");
}

XmlWriter& XmlWriter::attribute(std::string_view name, std::int32_t value) {
    return attribute(name, std::string_view(std::to_string(value)));
}

XmlWriter& XmlWriter::attribute(std::string_view name, const XmlItem& value) {
    return attribute(name, std::string_view(value.toXmlString()));
}

XmlWriter& XmlWriter::content() {
    closeStartTag();
    return *this;
}

void XmlWriter::end() {
    assert(!open_.empty());
    const auto name = std::move(open_.back());
    open_.pop_back();
    if (startTagOpen_) {
        out_ << "/>\n";
        startTagOpen_ = false;
        return;
    }
    indent();
    out_ << "</" << name << ">\n";
}

void XmlWriter::endWithText(std::string_view text) {
    assert(startTagOpen_);
    out_ << '>' << escapeXml(text) << "</" << open_.back() << ">\n";
    open_.pop_back();
    startTagOpen_ = false;
}

void XmlWriter::closeStartTag() {
    if (startTagOpen_) {
        out_ << ">\n";
        startTagOpen_ = false;
    }
}

void XmlWriter::indent() {
    out_ << std::string(static_cast<std::size_t>(depth()), '\t');
}
