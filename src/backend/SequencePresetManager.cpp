#include "backend/SequencePresetManager.h"

#include "backend/SequenceNumbers.h"
#include "generators/SequenceText.h"
#include "generators/SequenceXml.h"
#include "values/TextNumbers.h"

#include <sstream>
#include <utility>

namespace Backend::SequenceManagement {

namespace {

// The steps of an element "Sequence", alone or in a file's root, or of a bare text.
Platform::Result<Sequence> sequenceOfPreset(const std::string& text, const std::string& name) {
    if (!trimmed(text).starts_with('<')) {
        return sequenceOf(text);
    }
    const Platform::Result<Platform::XmlElement> root = Platform::parseXml(text, name);
    if (!root) {
        return root.fault();
    }
    return root.value().name == "Sequence" ? sequenceOf(root.value().text) : readSequenceFile(root.value());
}

} // namespace

SequencePresetManager::SequencePresetManager(std::filesystem::path folder,
                                             const std::function<void(const Platform::Fault&)>& reportFault)
    : folder_(std::move(folder), "SequenceFile", ".seq"), reportFault_(reportFault) {}

std::shared_ptr<const Sequence> SequencePresetManager::find(const std::string& name) {
    const auto known = known_.find(name);
    return known != known_.end() ? known->second : known_.emplace(name, read(name)).first->second;
}

std::shared_ptr<const Sequence> SequencePresetManager::read(const std::string& name) const {
    if (!folder_.exists(name)) {
        const auto builtIn = builtInSequence(name);
        return builtIn ? std::make_shared<Sequence>(*builtIn) : nullptr;
    }
    const Platform::Result<Platform::XmlElement> file = folder_.read(name);
    if (!file) {
        reportFault_(file.fault());
        return nullptr;
    }
    return std::make_shared<Sequence>(readSequenceFile(file.value()));
}

void SequencePresetManager::resolve(Layers::LayerList& layers) {
    for (Layers::Layer& layer : layers) {
        if (layer.sequence) {
            layer.sequence->sequence = find(layer.sequence->preset);
        }
    }
}

void SequencePresetManager::add(const std::string& name, const std::string& text) {
    const Platform::Result<Sequence> sequence = sequenceOfPreset(text, name);
    if (!sequence) {
        reportFault_(sequence.fault());
        return;
    }
    std::ostringstream file;
    XmlWriter xml(file);
    writeSequenceFile(xml, sequence.value());
    if (const Platform::Outcome written = folder_.write(name, file.str()); !written) {
        reportFault_(written.fault());
        return;
    }
    known_.erase(name);
    ++revision_;
}

void SequencePresetManager::remove(const std::string& name) {
    if (const Platform::Outcome removed = folder_.remove(name); !removed) {
        reportFault_(removed.fault());
        return;
    }
    known_.erase(name);
    ++revision_;
}

SequencePresetList SequencePresetManager::list() const {
    SequencePresetList presets;
    for (const std::string& name : folder_.names()) {
        if (const Platform::Result<Platform::XmlElement> file = folder_.read(name)) {
            std::ostringstream text;
            XmlWriter(text).begin("Sequence").endWithText(textOf(readSequenceFile(file.value())));
            presets[name] = trimmed(text.str());
        }
    }
    return presets;
}

} // namespace Backend::SequenceManagement
