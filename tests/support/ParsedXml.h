// XML text as the element that readers are given.
#pragma once

#include "platform/XmlDocument.h"

#include <gtest/gtest.h>
#include <string>

namespace TestSupport {

// Text that is not well-formed fails the test and is an empty element.
[[nodiscard]] inline Platform::XmlElement parsed(const std::string& xml) {
    auto element = Platform::parseXml(xml, "test");
    EXPECT_TRUE(element) << xml;
    return element ? element.value() : Platform::XmlElement{};
}

} // namespace TestSupport
