#include "desktop/models/ActionTexts.h"

#include "desktop/models/MessageTexts.h"
#include "desktop/models/PortsModel.h"
#include "input/ActionTable.h"
#include "input/FunctionSettingsTypes.h"
#include "values/ControllerNames.h"

#include <algorithm>
#include <functional>
#include <memory>

namespace Desktop {

using namespace Backend::Actions;
using namespace Backend::FunctionManagement;
using namespace Backend::MidiInput;
using namespace Backend::MidiInput::TranslationManagement;
using Backend::MidiEngine::MessageType;

namespace {

QString named(const QString& name, int number) {
    return name + ' ' + QString::number(number);
}

template <typename Value> QString xml(const Value& value) {
    return QString::fromStdString(value.toXmlString());
}

// The settings as words, whatever their type. A family says what its values mean by the overloads of `say`.
template <typename Family> class Words : public SettingsVisitor<Family> {
public:
    QString text;
    QString shortText;

    void visit(NoSettings<Family>&) override {}
    void visit(PlainSettings<Family>&) override {}
    void visit(typename Family::MidiSettings& settings) override { sayMessage(settings); }
    void visit(OnOffToggleSettings<Family>& settings) override { text = xml(settings.type); }
    void visit(SelectSettings<Family>& settings) override { stepped(say(settings.type), say(settings.value)); }
    void visit(ChangeBooleanSettings<Family>& settings) override { two(say(settings.type), xml(settings.value)); }
    void visit(ChangeNoteToggleSettings<Family>& settings) override { two(say(settings.type), xml(settings.value)); }
    void visit(SelectControlSettings<Family>& settings) override { stepped(xml(settings.type), say(settings.value)); }
    void visit(LoadPresetSettings<Family>& settings) override { text = QString::fromStdString(settings.preset); }
    void visit(MoveWindowSettings<Family>& settings) override {
        two(say(settings.x), say(settings.y));
        shortText = QStringLiteral("✥");
    }

protected:
    void add(const QString& part) { text += (text.isEmpty() || part.isEmpty() ? "" : ", ") + part; }
    void addWay(int zone, int output) {
        constexpr int notSet = 255;
        if (zone != notSet) {
            add(named(QObject::tr("zone"), zone + 1));
        }
        if (output != notSet) {
            add(named(QObject::tr("output"), output + 1));
        }
    }
    virtual void sayMessage(const typename Family::MidiSettings& settings) = 0;
    [[nodiscard]] virtual QString say(const typename Family::Selection& which) const = 0;
    [[nodiscard]] virtual QString say(const typename Family::Number& value) const = 0;
    // Indices are counted from 1 on screen.
    static QString sayItem(const SelectType& which) {
        return which.getKind() == SelectType::Kind::fixed ? QString::number(which.getIndex() + 1) : xml(which);
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
    void two(const QString& first, const QString& second) {
        text = first + (first.isEmpty() || second.isEmpty() ? "" : " ") + second;
    }
    void stepped(const QString& which, const QString& value) {
        two(which, value);
        shortText = value.isEmpty() ? arrowed(which) : value;
    }
};

class FunctionWords final : public Words<FunctionFamily> {
public:
    explicit FunctionWords(const Function& function) : event_(function.getMidiEvent()) {
        const std::unique_ptr<Function> copy = function.clone();
        copy->getSettings().accept(*this);
    }

private:
    void sayMessage(const FunctionFamily::MidiSettings& settings) override {
        const MessageType type = event_.type;
        const ByteNames names = byteNames(type);
        if (isWide(type)) {
            text = QString::number(settings.getValue14());
            shortText = type == MessageType::pitchBend ? named(QObject::tr("bend"), settings.getValue14()) : QString();
        } else if (type == MessageType::controllerChange) {
            shortText = QStringLiteral("CC%1 %2").arg(settings.d1).arg(settings.d2);
            text = QStringLiteral("%1 (%2) = %3")
                       .arg(settings.d1)
                       .arg(QString::fromStdString(Backend::MidiEngine::controllerName(settings.d1)))
                       .arg(settings.d2);
        } else if (!names.d1.isEmpty()) {
            text = firstByteText(type, settings.d1);
            if (!names.d2.isEmpty()) {
                shortText = text;
                add(named(names.d2, settings.d2));
            } else if (type == MessageType::programChange) {
                shortText = named(QObject::tr("prog"), settings.d1);
            }
        }
        addWay(settings.zone, settings.output);
        if (settings.channel >= 0) {
            add(named(QObject::tr("channel"), settings.channel + 1));
        }
    }
    QString say(const SelectType& which) const override { return sayItem(which); }
    QString say(const RelativeFixedValue& value) const override { return xml(value); }

    Backend::MidiEventIdentity event_;
};

class TranslationWords final : public Words<TranslationFamily> {
public:
    TranslationWords(const Translation& translation, const MidiEvent& event) : event_(event) {
        const std::unique_ptr<Translation> copy = translation.clone();
        const MessageType type = event.message.getMessageType();
        const auto sent = copy->getMidiMessage({type, 0, 0, 0, -1, -1, 0, Backend::noTicks});
        sent_ = sent ? sent->getMessageType() : type;
        copy->getSettings().accept(*this);
    }

private:
    void sayMessage(const TranslationFamily::MidiSettings& settings) override {
        const ByteNames names = byteNames(sent_);
        if (!names.d1.isEmpty()) {
            const bool numbered = firstByteText(sent_, 0) != "0"; // it has names that say what it is
            add(byteText(settings.d1, numbered ? QString() : names.d1 + ' ',
                         [this](int value) { return firstByteText(sent_, value); }));
        }
        if (!names.d2.isEmpty()) {
            add(byteText(settings.d2, names.d2 + ' ', [](int value) { return QString::number(value); }));
        }
        addWay(settings.zone, settings.output);
        if (settings.channel.isUnchanged()) {
            add(QObject::tr("channel as it came in"));
        } else if (settings.channel.isFixed()) {
            add(named(QObject::tr("channel"), settings.channel.getChannel() + 1));
        }
    }
    QString say(const TranslationSelection& which) const override {
        if (which.isAll() || !which.getValue().isFromByte()) {
            return sayItem(*which.forMessage({}));
        }
        return say(which.getValue());
    }
    QString say(const MidiTranslationValue& value) const override {
        if (!value.isFromByte()) {
            return xml(value);
        }
        const ByteNames names = incomingNames(event_.message.getMessageType());
        const bool first = isFirst(value);
        QString said = QObject::tr("incoming %1").arg(first ? names.d1 : names.d2);
        if (const int offset = value.getNumber().getValue(); offset != 0) {
            said += (offset > 0 ? " +" : " ") + QString::number(offset);
        }
        return said;
    }
    static bool isFirst(const MidiTranslationValue& value) {
        return value.getKind() == MidiTranslationValue::Kind::d1 ||
               value.getKind() == MidiTranslationValue::Kind::d1Offset;
    }
    QString byteText(const MidiTranslationValue& value, const QString& name,
                     const std::function<QString(int)>& written) const {
        const bool isKnown = event_.message.isNote() || event_.message.isControllerChange();
        if (value.isFromByte() && !(isKnown && isFirst(value))) {
            return say(value);
        }
        return name + written(std::clamp(value.evaluate(event_.message), 0, 127));
    }

    MidiEvent event_;
    MessageType sent_ = MessageType::none;
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
        if (action.function == keyword || action.translation == keyword) {
            const std::string_view name = action.displayName.empty() ? keyword : action.displayName;
            return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
        }
    }
    return QString::fromStdString(keyword);
}

QString shortTextOf(const Function& function) {
    const FunctionWords words(function);
    return words.shortText.isEmpty() ? abbreviated(displayNameOf(function.getName())) : words.shortText;
}

QString longTextOf(const Function& function) {
    const FunctionWords words(function);
    return displayNameOf(function.getName()) + (words.text.isEmpty() ? "" : " " + words.text);
}

QString longTextOf(const Translation& translation, const MidiEvent& event) {
    const TranslationWords words(translation, event);
    return displayNameOf(translation.getName()) + (words.text.isEmpty() ? "" : " " + words.text);
}

QStringList comparisons() {
    return {"<", ">", "≤", "≥", "=", "≠"};
}

QString conditionText(const MidiTranslationCondition& condition, MessageType incoming) {
    if (condition.isOff()) {
        return QObject::tr("always");
    }
    const ByteNames names = incomingNames(incoming);
    return (condition.getByte() == MidiTranslationCondition::Byte::d1 ? names.d1 : names.d2) + ' ' +
           comparisons().value(static_cast<int>(condition.getOperator())) + ' ' + QString::number(condition.getValue());
}

QString sentText(const Backend::MidiEngine::QelMidiMessage& message, const PortsModel& ports) {
    QString text = messageText(message.getMidiMessage());
    if (hasChannel(message.getMessageType())) {
        text += ", " + (message.isDefaultChannel() ? QObject::tr("channel of the layer")
                                                   : named(QObject::tr("channel"), message.getChannel() + 1));
    }
    if (message.getZone() >= 0) {
        text += ", " + named(QObject::tr("zone"), message.getZone() + 1);
    }
    if (message.getOutput() >= 0) {
        text += ", " + ports.outputName(message.getOutput());
    }
    return text;
}

} // namespace Desktop
