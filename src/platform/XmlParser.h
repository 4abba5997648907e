// The system's own XML parser, behind the check of XmlCheck.h.
#pragma once

#include "platform/XmlCheck.h"
#include "platform/XmlDocument.h"

namespace Platform {

// The tree of a text that has passed the check.
[[nodiscard]] Result<XmlElement> parseCheckedXml(const CheckedXml& xml, const std::string& name);

} // namespace Platform
