// The base of everything that has a text form in an XML attribute.
#pragma once

#include <string>

class XmlItem {
public:
    virtual ~XmlItem() = default;

    // The text as it stands in a file before escaping; reading it back gives an equal value.
    [[nodiscard]] virtual std::string toXmlString() const = 0;

protected:
    XmlItem() = default;
    XmlItem(const XmlItem&) = default;
    XmlItem& operator=(const XmlItem&) = default;
};
