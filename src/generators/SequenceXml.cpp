#include "generators/SequenceXml.h"

#include "generators/SequenceText.h"

namespace Backend::SequenceManagement {

const ElementFormat& sequenceFileFormat() {
    static const ElementFormat format = [] {
        ElementFormat sequence;
        sequence.name = "Sequence";
        sequence.meaning = "The steps, parted by \",\", the notes of one step by \"|\".";
        sequence.holdsText = true;
        ElementFormat file;
        file.name = "SequenceFile";
        file.meaning = "One sequence, named after its file.";
        file.children = {sequence};
        return file;
    }();
    return format;
}

Sequence readSequenceFile(const Platform::XmlElement& root) {
    const Platform::XmlElement* const sequence = root.child("Sequence");
    return sequence != nullptr ? sequenceOf(sequence->text) : Sequence{};
}

void writeSequenceFile(XmlWriter& xml, const Sequence& sequence) {
    xml.begin("SequenceFile").content();
    xml.begin("Sequence").endWithText(textOf(sequence));
    xml.end();
}

void checkSequenceFile(const Platform::XmlElement& root, const std::string& file,
                       std::vector<Platform::Fault>& faults) {
    checkElement(root, sequenceFileFormat(), file, faults);
    int count = 0;
    for (const Platform::XmlElement& child : root.children) {
        if (child.name != "Sequence") {
            continue;
        }
        if (++count == 2) {
            faults.push_back({file, child.line, "there is more than one <Sequence>; the first is read"});
        }
        for (std::string& reason : faultsOfSequence(child.text)) {
            faults.push_back({file, child.line, std::move(reason)});
        }
    }
    if (count == 0) {
        faults.push_back({file, root.line, "there is no <Sequence>"});
    }
}

} // namespace Backend::SequenceManagement
