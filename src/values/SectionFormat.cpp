#include "values/SectionFormat.h"

#include "values/XmlWriter.h"

#include <utility>

ElementFormat sectionFormat(std::string_view name, std::string_view meaning, std::string_view presetFolder,
                            std::string_view mergeMeaning, std::vector<ElementFormat> children) {
    ElementFormat section;
    section.name = name;
    section.meaning = meaning;
    section.attributes = {
        AttributeFormat::presetOf("preset", presetFolder, "The preset that the section stands for."),
        AttributeFormat::booleanOf("merge", false, mergeMeaning),
    };
    section.children = std::move(children);
    return section;
}

void writeSectionReference(std::ostream& out, int depth, std::string_view name, std::string_view preset) {
    XmlWriter xml(out, depth);
    xml.begin(name).attribute("preset", preset).attribute("merge", false).content().end();
}
