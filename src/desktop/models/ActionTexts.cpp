#include "desktop/models/ActionTexts.h"

#include "input/ActionTable.h"
#include "input/FunctionSettingsTypes.h"
#include "values/ControllerNames.h"
#include "values/Note.h"

#include <memory>

namespace Desktop {

using namespace Backend::FunctionManagement;
using Backend::MidiEngine::MessageType;

namespace {

// The settings as words, whatever their type.
class Words final : public FunctionSettingsVisitor {
public:
    explicit Words(const Function& function) : event_(function.getMidiEvent()) {
        const std::unique_ptr<Function> copy = function.clone();
        copy->getSettings().accept(*this);
    }
    QString text;
    QString shortText;

    void visit(NoFunctionSettingsType&) override {}
    void visit(ActionSettingsType&) override {}
    void visit(OnOffToggleSettingsType& settings) override { text = xml(settings.type); }
    void visit(MidiSettingsType& settings) override {
        const auto named = [](const QString& name, int number) { return name + ' ' + QString::number(number); };
        switch (event_.type) {
        case MessageType::noteOn:
        case MessageType::noteOff:
        case MessageType::keyPressure:
            shortText = noteName(settings.d1);
            text = shortText + ", " + named(QObject::tr("velocity"), settings.d2);
            break;
        case MessageType::controllerChange:
            shortText = QStringLiteral("CC%1 %2").arg(settings.d1).arg(settings.d2);
            text = QStringLiteral("%1 (%2) = %3")
                       .arg(settings.d1)
                       .arg(QString::fromStdString(Backend::MidiEngine::controllerName(settings.d1)))
                       .arg(settings.d2);
            break;
        case MessageType::pitchBend:
            shortText = named(QObject::tr("bend"), settings.getValue14());
            text = QString::number(settings.getValue14());
            break;
        case MessageType::songPosition:
            text = QString::number(settings.getValue14());
            break;
        case MessageType::programChange:
            shortText = named(QObject::tr("prog"), settings.d1);
            text = QString::number(settings.d1);
            break;
        case MessageType::channelPressure:
        case MessageType::songSelect:
        case MessageType::unofficialBusSelect:
            text = QString::number(settings.d1);
            break;
        default:
            break;
        }
        const auto add = [this, &named](const QString& name, int number) {
            text += (text.isEmpty() ? "" : ", ") + named(name, number);
        };
        if (settings.zone != MidiSettingsType::NOT_SET) {
            add(QObject::tr("zone"), settings.zone + 1);
        }
        if (settings.channel >= 0) {
            add(QObject::tr("channel"), settings.channel + 1);
        }
        if (settings.output != MidiSettingsType::NOT_SET) {
            add(QObject::tr("output"), settings.output + 1);
        }
    }
    void visit(SelectSettingsType& settings) override {
        two(xml(settings.type), xml(settings.value));
        shortText = settings.value.isNoChange() ? arrowed(xml(settings.type)) : xml(settings.value);
    }
    void visit(ChangeBooleanSettingsType& settings) override { two(xml(settings.type), xml(settings.value)); }
    void visit(ChangeNoteToggleSettingsType& settings) override { two(xml(settings.type), xml(settings.value)); }
    void visit(SelectControlSettingsType& settings) override {
        two(xml(settings.type), xml(settings.value));
        shortText = settings.value.isNoChange() ? arrowed(xml(settings.type)) : xml(settings.value);
    }
    void visit(LoadPresetSettingsType& settings) override { text = QString::fromStdString(settings.preset); }
    void visit(MoveWindowSettingsType& settings) override {
        two(xml(settings.x), xml(settings.y));
        shortText = QStringLiteral("✥");
    }

private:
    static QString arrowed(const QString& word) {
        const char* const arrows[][2]{{"up", "↑"}, {"down", "↓"}, {"left", "←"}, {"right", "→"}};
        for (const auto& [name, arrow] : arrows) {
            if (word == QLatin1String(name)) {
                return QString::fromUtf8(arrow);
            }
        }
        return word;
    }
    template <typename Value> static QString xml(const Value& value) {
        return QString::fromStdString(value.toXmlString());
    }
    static QString noteName(int number) { return QString::fromStdString(Note(number).getName()); }
    void two(const QString& first, const QString& second) {
        text = first + (first.isEmpty() || second.isEmpty() ? "" : " ") + second;
    }

    Backend::MidiEventIdentity event_;
};

// The words that matter of a name in lists.
QString abbreviated(QString name) {
    for (const char* const word : {"Midi ", "Change ", "Show ", "Select ", "Load "}) {
        name.remove(QLatin1String(word));
    }
    return name.remove(" QEL").toLower();
}

} // namespace

QString displayNameOf(const std::string& keyword) {
    for (const Backend::Actions::Action& action : Backend::Actions::actions) {
        if (action.function == keyword) {
            const std::string_view name = action.displayName.empty() ? action.function : action.displayName;
            return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
        }
    }
    return QString::fromStdString(keyword);
}

QString shortTextOf(const Function& function) {
    const Words words(function);
    return words.shortText.isEmpty() ? abbreviated(displayNameOf(function.getName())) : words.shortText;
}

QString longTextOf(const Function& function) {
    const Words words(function);
    return displayNameOf(function.getName()) + (words.text.isEmpty() ? "" : " " + words.text);
}

} // namespace Desktop
