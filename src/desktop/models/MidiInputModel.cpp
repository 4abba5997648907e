#include "desktop/models/MidiInputModel.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "midiinput/ConfigurationSection.h"
#include "midiinput/MidiInputMessageManager.h"
#include "midiinput/TranslationFactory.h"

#include <QStringList>
#include <sstream>

namespace Desktop {

using namespace Backend::MidiInput;

MidiInputModel::MidiInputModel(Models& models) : models_(models) {
    if (const auto map = models.qel().getMidiInputMap()) {
        map_ = *map;
    }
    onCopy<MidiEventConfigurationMap>(midiInputLoadedMessage, [this](MidiEventConfigurationMap map) {
        map_ = std::move(map);
        emit changed();
    });
    onCopy<std::vector<MidiEventConfiguration>>(midiEventsPutMessage,
                                                [this](const std::vector<MidiEventConfiguration>& list) {
                                                    for (const MidiEventConfiguration& each : list) {
                                                        map_.store(each.event, each);
                                                    }
                                                    emit changed();
                                                });
}

QString MidiInputModel::textOf(const MidiEvent& event) const {
    QString text = QString::fromStdString(event.message.getEventNameWithCcAndNoteDetail());
    if (event.message.isNote()) {
        text.replace(0, 4, event.message.isNoteOn() ? tr("Note On") : tr("Note Off"));
    }
    text += ", " + (event.input == MidiEvent::ANY ? tr("any input") : models_.ports.inputName(event.input));
    return text + ", " +
           (event.channel == MidiEvent::ANY ? tr("any channel") : tr("channel %1").arg(event.channel + 1));
}

QString MidiInputModel::textOf(const MidiEventConfiguration& configuration) {
    std::ostringstream text;
    for (const auto& translation : configuration.translations) {
        if (translation) {
            TranslationManagement::writeTranslation(text, 0, *translation);
        }
    }
    return QString::fromStdString(text.str()).replace("\n\t", " ").replace("\n</", " </").trimmed();
}

std::optional<MidiEventConfiguration::Translations> MidiInputModel::translationsIn(const QString& text,
                                                                                   QString& fault) {
    MidiEventConfiguration::Translations translations;
    for (const QString& line : text.split('\n', Qt::SkipEmptyParts)) {
        auto translation = TranslationManagement::readTranslation(line.trimmed().toStdString());
        if (!translation) {
            fault = QString::fromStdString(translation.fault().text());
            return std::nullopt;
        }
        translations.push_back(std::move(translation.value()));
    }
    return translations;
}

void MidiInputModel::put(const MidiEventConfiguration& configuration) {
    const MidiEventConfiguration* const known = map_.find(configuration.event);
    models_.edits.edit<MidiEventConfiguration>(tr("edit what a message does"),
                                               known != nullptr ? *known : MidiEventConfiguration(configuration.event),
                                               configuration, [this](const MidiEventConfiguration& now) {
                                                   map_.store(now.event, now);
                                                   models_.qel().getMidiInputMessageManager().postPut({now});
                                                   emit changed();
                                               });
}

} // namespace Desktop
