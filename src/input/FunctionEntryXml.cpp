#include "input/FunctionEntryXml.h"

#include "input/FunctionFactory.h"
#include "values/AttributeReading.h"
#include "values/MaxActions.h"

namespace Backend::ComputerInput {

namespace {

using FunctionManagement::Function;
using Platform::XmlElement;

ElementFormat holderFormat(std::string_view name, std::string_view meaning) {
    ElementFormat format;
    format.name = name;
    format.meaning = meaning;
    format.children = FunctionManagement::functionFormats();
    format.once = true;
    format.oneChild = true;
    return format;
}

AttributeFormat keepSendingFormat() {
    return AttributeFormat::booleanOf("keepSending", false,
                                      "The down function is executed again whenever what is held repeats.");
}

// Null for an absent element and for a function that there is not.
std::shared_ptr<const Function> readFunction(const XmlElement* holder, QelIF& qel) {
    return holder != nullptr && !holder->children.empty()
               ? FunctionManagement::createFunction(holder->children.front(), qel)
               : nullptr;
}

void writeFunction(XmlWriter& xml, std::string_view holder, const std::shared_ptr<const Function>& function) {
    if (function) {
        xml.begin(holder).content();
        function->writeXml(xml.stream(), xml.depth());
        xml.end();
    }
}

} // namespace

ElementFormat functionEntryFormat() {
    ElementFormat entry;
    entry.name = "Function";
    entry.meaning = "One thing that it does.";
    entry.attributes = {keepSendingFormat()};
    entry.children = {holderFormat("Down", "What happens when it goes down: one function."),
                      holderFormat("Up", "What happens when it comes up: one function.")};
    return entry;
}

std::vector<FunctionEntry> readFunctionEntries(const XmlElement& holder, QelIF& qel) {
    static const AttributeFormat keepSending = keepSendingFormat();
    std::vector<FunctionEntry> entries;
    for (const XmlElement& child : holder.children) {
        if (child.name == "Function" && entries.size() < maxActions) {
            entries.push_back({readBoolean(child, keepSending), readFunction(child.child("Down"), qel),
                               readFunction(child.child("Up"), qel)});
        }
    }
    return entries;
}

void writeFunctionEntries(XmlWriter& xml, const std::vector<FunctionEntry>& entries) {
    for (const FunctionEntry& entry : entries) {
        xml.begin("Function").attribute("keepSending", entry.keepSending).content();
        writeFunction(xml, "Down", entry.down);
        writeFunction(xml, "Up", entry.up);
        xml.end();
    }
}

} // namespace Backend::ComputerInput
