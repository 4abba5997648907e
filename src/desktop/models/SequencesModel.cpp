#include "desktop/models/SequencesModel.h"

#include "desktop/models/Models.h"
#include "generators/SequenceText.h"
#include "gui/GuiMessages.h"
#include "gui/QelGui.h"
#include "platform/XmlDocument.h"

#include <utility>

namespace Desktop {

using Backend::SequenceManagement::Sequence;

SequencesModel::SequencesModel(Models& models) : models_(models) {
    onCopy<Gui::SequencePresetList>(idOf(Gui::GuiMessage::sequencePresets), [this](Gui::SequencePresetList list) {
        models_.gui().getSequencePresetList() = std::move(list);
        emit changed();
    });
}

QStringList SequencesModel::names() const {
    QStringList names;
    for (const auto& [name, text] : models_.gui().getSequencePresetList()) {
        names << QString::fromStdString(name);
    }
    return names;
}

bool SequencesModel::contains(const std::string& name) const {
    return models_.gui().getSequencePresetList().contains(name);
}

Sequence SequencesModel::sequence(const std::string& name) const {
    const Gui::SequencePresetList& list = models_.gui().getSequencePresetList();
    const auto found = list.find(name);
    if (found == list.end()) {
        return {};
    }
    const auto element = Platform::parseXml(found->second, name);
    return Backend::SequenceManagement::sequenceOf(element ? element.value().text : found->second);
}

std::string SequencesModel::freeName() const {
    for (int number = 1;; ++number) {
        std::string name = "Sequence " + std::to_string(number);
        if (!contains(name)) {
            return name;
        }
    }
}

void SequencesModel::change(const std::string& name, const Sequence& after) {
    models_.edits.edit<Sequence>(tr("edit the sequence %1").arg(QString::fromStdString(name)), sequence(name), after,
                                 [this, name](const Sequence& now) { add(name, now); });
}

void SequencesModel::add(const std::string& name, const Sequence& sequence) {
    models_.gui().addSequencePreset(name, Backend::SequenceManagement::textOf(sequence));
    emit changed();
}

void SequencesModel::remove(const std::string& name) {
    models_.edits.perform(
        tr("delete the sequence %1").arg(QString::fromStdString(name)),
        [this, name] {
            models_.gui().deleteSequencePreset(name);
            emit changed();
        },
        [this, name, before = sequence(name)] { add(name, before); });
}

} // namespace Desktop
