#include "desktop/panels/FormRows.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/models/NumberTexts.h"
#include "desktop/models/PresetNames.h"
#include "desktop/widgets/MenuBox.h"

#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <utility>

namespace Desktop {

using Backend::MidiInput::TranslationManagement::MidiTranslationValue;
using Backend::MidiInput::TranslationManagement::TranslationSelection;
using Choice = ChoiceField::Choice;

namespace {

constexpr std::uint8_t noWay = 255;
constexpr int mostNumbers = 16383; // the largest value of a control

QString fromOne(int number) {
    return QString::number(number + 1);
}

Choice numbered(const QString& text, int min, int max, int first, std::function<QString(int)> written) {
    return {text, true, min, max, first, std::move(written)};
}

// What a number or a step to it may be.
std::vector<Choice> changes() {
    return {{QObject::tr("no change")},
            numbered(QObject::tr("set to"), 0, mostNumbers, 0, {}),
            numbered(QObject::tr("step by"), -mostNumbers, mostNumbers, 1, signedText)};
}

RelativeFixedValue changeOf(int choice, int number) {
    return choice == 1 ? RelativeFixedValue::fixed(number) : RelativeFixedValue::relative(choice == 0 ? 0 : number);
}

int placeOf(const RelativeFixedValue& value) {
    return value.isNoChange() ? 0 : (value.isFixed() ? 1 : 2);
}

// Which item of a list: the words stand at the number of their kind, a number in place of the fixed one.
std::vector<Choice> items() {
    return {{QObject::tr("the next one up")},
            {QObject::tr("the next one down")},
            {QObject::tr("the selected one")},
            numbered(QObject::tr("number"), 0, 127, 0, fromOne),
            {QObject::tr("all of them")}};
}

} // namespace

FormRows::FormRows(Models& models, QWidget& fields, QString role, std::function<void()> changed)
    : models_(models), fields_(fields), layout_(*new QFormLayout(&fields)), role_(std::move(role)),
      changed_(std::move(changed)) {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(grid(1));
}

void FormRows::addRow(const Label& label, QWidget* widget) {
    if (auto* const choice = qobject_cast<ChoiceField*>(widget)) {
        choice->describe(label.name + " " + role_, label.help);
    } else {
        widget->setAccessibleName(label.name + " " + role_);
        widget->setStatusTip(label.help);
        widget->setFocusPolicy(Qt::StrongFocus);
    }
    auto* const caption = new QLabel(label.name, &fields_);
    caption->setObjectName("Dim");
    layout_.addRow(caption, widget);
}

void FormRows::addNumber(const Label& label, int min, int max, int value, std::function<void(int)> set,
                         std::function<QString(int)> written) {
    auto* const field = new NumberField(&fields_);
    field->setRange(min, max);
    field->setValue(value);
    if (written) {
        field->setText(std::move(written));
    }
    QObject::connect(field, &NumberField::moved, field, [set = std::move(set), changed = changed_](int now) {
        set(now);
        changed();
    });
    QObject::connect(field, &NumberField::letGo, field, [&models = models_] { models.edits.endOfGesture(); });
    addRow(label, field);
}

void FormRows::addMenu(const Label& label, const QStringList& items, int current, std::function<void(int)> set) {
    auto* const box = makeMenu({}, {}, &fields_);
    box->addItems(items);
    box->setCurrentIndex(current);
    QObject::connect(box, &QComboBox::activated, box,
                     [&models = models_, set = std::move(set), changed = changed_](int index) {
                         models.edits.alone([&] {
                             set(index);
                             changed();
                         });
                     });
    addRow(label, box);
}

void FormRows::addChoice(const Label& label, std::vector<Choice> choices, int current, int number,
                         std::function<void(int, int)> set) {
    auto* const field = new ChoiceField(std::move(choices), &fields_);
    field->set(current, number);
    QObject::connect(field, &ChoiceField::chosen, field, [field, set = std::move(set), changed = changed_] {
        set(field->choice(), field->number());
        changed();
    });
    QObject::connect(field, &ChoiceField::letGo, field, [&models = models_] { models.edits.endOfGesture(); });
    addRow(label, field);
}

void FormRows::add(const Label& label, OnOffToggle& value) {
    addMenu(label, {QObject::tr("on"), QObject::tr("off"), QObject::tr("the other way")},
            static_cast<int>(value.getState()),
            [&value](int index) { value = OnOffToggle(static_cast<OnOffToggle::State>(index)); });
}

void FormRows::add(const Label& label, NoteToggle& value) {
    addMenu(label,
            {QObject::tr("off"), QObject::tr("type 1: the second press ends"),
             QObject::tr("type 2: the second press strikes again")},
            static_cast<int>(value.getState()),
            [&value](int index) { value = NoteToggle(static_cast<NoteToggle::State>(index)); });
}

void FormRows::add(const Label& label, SelectType& value) {
    addChoice(label, items(), static_cast<int>(value.getKind()), value.getIndex(), [&value](int choice, int number) {
        const auto kind = static_cast<SelectType::Kind>(choice);
        value = kind == SelectType::Kind::fixed ? SelectType::fixed(number) : SelectType(kind);
    });
}

void FormRows::add(const Label& label, RelativeFixedValue& value) {
    addChoice(label, changes(), placeOf(value), value.getValue(),
              [&value](int choice, int number) { value = changeOf(choice, number); });
}

void FormRows::add(const Label& label, SelectControlType& value) {
    using Kind = SelectControlType::Kind;
    QStringList items;
    std::vector<SelectControlType> values;
    const auto offer = [&](const QString& text, const SelectControlType& which) {
        items << text;
        values.push_back(which);
    };
    offer(QObject::tr("the selected one"), SelectControlType(Kind::selected));
    offer(QObject::tr("the one above"), SelectControlType(Kind::up));
    offer(QObject::tr("the one below"), SelectControlType(Kind::down));
    offer(QObject::tr("the one to the left"), SelectControlType(Kind::left));
    offer(QObject::tr("the one to the right"), SelectControlType(Kind::right));
    offer(QObject::tr("all of them"), SelectControlType(Kind::all));
    const auto place = [](const Cell& cell) {
        return QObject::tr("row %1, column %2").arg(cell.x + 1).arg(cell.y + 1);
    };
    for (const auto& [cell, control] : models_.controls.map()) {
        const QString name = QString::fromStdString(control.name);
        offer(name.isEmpty() ? place(cell) : name + " (" + place(cell) + ")", SelectControlType(cell));
    }
    if (std::find(values.begin(), values.end(), value) == values.end()) {
        offer(place(value.getCell()), value); // no control is there
    }
    const auto current = std::find(values.begin(), values.end(), value) - values.begin();
    addMenu(label, items, static_cast<int>(current),
            [&value, values](int index) { value = values[static_cast<std::size_t>(index)]; });
}

int FormRows::addBytes(std::vector<Choice>& choices) const {
    const int place = static_cast<int>(choices.size());
    const ByteNames names = incomingNames(incoming_);
    for (const QString& name : {names.d1, names.d2}) {
        choices.push_back(numbered(QObject::tr("incoming %1").arg(name), -127, 127, 0, signedText));
    }
    return place;
}

MidiTranslationValue FormRows::fromByte(int which, int offset) {
    using Kind = MidiTranslationValue::Kind;
    if (offset == 0) {
        return MidiTranslationValue(which == 0 ? Kind::d1 : Kind::d2);
    }
    const std::string text = (which == 0 ? "D1 " : "D2 ") + std::string(offset < 0 ? "" : "+") + std::to_string(offset);
    return MidiTranslationValue(std::string_view(text));
}

void FormRows::addValue(const Label& label, std::vector<Choice> choices, Value& value, int place,
                        std::function<Value(int, int)> made) {
    using Kind = Value::Kind;
    const int bytes = addBytes(choices);
    const Kind kind = value.getKind();
    int current = place;
    if (value.isFromByte()) {
        current = kind == Kind::d1 || kind == Kind::d1Offset ? bytes : bytes + 1;
    } else if (kind != Kind::number) {
        // A word that means nothing here stays as it is until another choice is made.
        current = static_cast<int>(choices.size());
        choices.push_back({QString::fromStdString(value.toXmlString())});
    }
    addChoice(label, std::move(choices), current, value.getNumber().getValue(),
              [&value, bytes, made = std::move(made), word = value](int choice, int number) {
                  value = choice < bytes ? made(choice, number)
                                         : (choice < bytes + 2 ? fromByte(choice - bytes, number) : word);
              });
}

void FormRows::add(const Label& label, MidiTranslationValue& value) {
    addValue(label, changes(), value, placeOf(value.getNumber()),
             [](int choice, int number) { return MidiTranslationValue(changeOf(choice, number)); });
}

void FormRows::addByte(const Label& label, MidiTranslationValue& value, std::function<QString(int)> written) {
    addValue(label, {numbered(QObject::tr("always"), 0, 127, 0, std::move(written))}, value, 0,
             [](int, int number) { return MidiTranslationValue(RelativeFixedValue::fixed(number)); });
}

void FormRows::add(const Label& label, TranslationSelection& value) {
    using Kind = SelectType::Kind;
    std::vector<Choice> choices = items();
    const int bytes = addBytes(choices);
    int current = static_cast<int>(Kind::all);
    if (!value.isAll()) {
        const MidiTranslationValue& now = value.getValue();
        switch (now.getKind()) {
        case MidiTranslationValue::Kind::d1:
        case MidiTranslationValue::Kind::d1Offset:
            current = bytes;
            break;
        case MidiTranslationValue::Kind::d2:
        case MidiTranslationValue::Kind::d2Offset:
            current = bytes + 1;
            break;
        default:
            current = static_cast<int>(value.forMessage({})->getKind());
        }
    }
    addChoice(label, std::move(choices), current, value.getValue().getNumber().getValue(),
              [&value, bytes](int choice, int number) {
                  const auto kind = static_cast<Kind>(choice);
                  if (choice >= bytes) {
                      const std::string text = fromByte(choice - bytes, number).toXmlString();
                      value = TranslationSelection(std::string_view(text));
                  } else {
                      value = TranslationSelection(kind == Kind::fixed ? SelectType::fixed(number) : SelectType(kind));
                  }
              });
}

void FormRows::addPreset(const Label& label, const QString& folder, std::string& value) {
    auto* const box = makeMenu({}, {}, &fields_);
    box->setEditable(true); // one may be named that is yet to be saved
    box->setInsertPolicy(QComboBox::NoInsert);
    box->addItems(presetNames(models_, folder));
    box->setCurrentText(QString::fromStdString(value));
    box->lineEdit()->setAccessibleName(label.name + " " + role_);
    QObject::connect(box, &QComboBox::currentTextChanged, box, [&value, changed = changed_](const QString& text) {
        value = text.toStdString();
        changed();
    });
    // One name is one edit, however many letters it has.
    QObject::connect(box->lineEdit(), &QLineEdit::editingFinished, box,
                     [&models = models_] { models.edits.endOfGesture(); });
    addRow(label, box);
}

void FormRows::addZone(std::uint8_t& value) {
    QStringList items{QObject::tr("none")};
    constexpr int usual = 16;
    for (int i = 1; i <= std::max(usual, value == noWay ? 0 : value + 1); ++i) {
        items << QString::number(i);
    }
    addMenu({QObject::tr("Zone"), QObject::tr("The zone that it goes to, which may transpose it")}, items,
            value == noWay ? 0 : value + 1,
            [&value](int index) { value = index == 0 ? noWay : static_cast<std::uint8_t>(index - 1); });
}

void FormRows::addOutput(std::uint8_t& value) {
    QStringList items{QObject::tr("default")};
    const int count = std::max(static_cast<int>(models_.ports.outputs().size()), value == noWay ? 0 : value + 1);
    for (int i = 0; i < count; ++i) {
        items << models_.ports.outputName(i);
    }
    addMenu({QObject::tr("Output"), QObject::tr("The MIDI output that it goes to")}, items,
            value == noWay ? 0 : value + 1,
            [&value](int index) { value = index == 0 ? noWay : static_cast<std::uint8_t>(index - 1); });
}

void FormRows::addChannel(const QStringList& words, int current, std::function<void(int)> set) {
    QStringList items = words;
    constexpr int channels = 16;
    for (int i = 1; i <= channels; ++i) {
        items << QString::number(i);
    }
    addMenu({QObject::tr("Channel"), QObject::tr("The channel that it goes out on")}, items, current, std::move(set));
}

} // namespace Desktop
