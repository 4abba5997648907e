#include "desktop/panels/JoystickPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/EntriesEditor.h"
#include "desktop/panels/ListChooser.h"
#include "desktop/panels/ValueEventFields.h"
#include "desktop/widgets/ColumnArea.h"
#include "desktop/widgets/JoystickView.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"
#include "input/JoystickMessageManager.h"

#include <algorithm>
#include <initializer_list>

namespace Desktop {

using namespace Backend::Joystick;

JoystickPanel::JoystickPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::joystick, tr("Joystick"), tr("What sticks and buttons do"), models, parent) {
    view_ = new JoystickView(models.joysticks, this);
    view_->describe(tr("How the joystick stands"), tr("Its axes and its buttons, as they are now"));
    auto* const area = new ColumnArea(this);
    auto* const content = new QWidget(area);
    column_ = new QVBoxLayout(content);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(grid(2));
    area->setWidget(content);
    body().addWidget(area);
    column_->addWidget(view_);
    line_ = new QLabel(this);
    line_->setObjectName("Dim");
    line_->setWordWrap(true);
    column_->addWidget(line_);
    makeAxis();
    makeButtons();
    column_->addStretch(1);
    connect(&models.joysticks, &Model::changed, this, &JoystickPanel::refresh);
    setPresets(
        {"Joystick Presets", [this] { return this->models().joysticks.map().presetName; },
         [this](const std::string& name) { this->models().joysticks.loadPreset(name); },
         [this](const std::string& name) { this->models().qel().getJoystickMessageManager().postSavePreset(name, {}); },
         [this](const std::string& name) { this->models().qel().getJoystickMessageManager().postDeletePreset(name); },
         [this] {
             std::vector<PresetElement> elements;
             for (const JoyAxisElementId& id : idsOf(this->models().joysticks.map().axes)) {
                 elements.push_back({tr("joystick %1, axis %2").arg(id.joystick + 1).arg(axis_->itemText(id.axis)),
                                     id.joystick == joystick_->currentIndex() && id.axis == axis_->currentIndex()});
             }
             for (const JoyButtonElementId& id : idsOf(this->models().joysticks.map().buttons)) {
                 elements.push_back({tr("joystick %1, button %2").arg(id.joystick + 1).arg(id.button + 1),
                                     id.joystick == joystick_->currentIndex() && id.button == button_->value()});
             }
             return elements;
         },
         [this](const std::string& name, const std::vector<int>& places) {
             const auto& map = this->models().joysticks.map();
             const int axes = static_cast<int>(map.axes.size());
             std::vector<int> buttonPlaces;
             for (const int each : places) {
                 if (each >= axes) {
                     buttonPlaces.push_back(each - axes);
                 }
             }
             this->models().qel().getJoystickMessageManager().postSavePreset(
                 name, {idsAt(map.axes, places), idsAt(map.buttons, buttonPlaces)});
         }});
    refresh();
}

void JoystickPanel::makeAxis() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(grid(1));
    const auto place = [&](QHBoxLayout& where, const QString& caption, QWidget* widget) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        where.addWidget(label);
        where.addWidget(widget);
    };
    const auto menu = [&](const QStringList& items, const QString& name, const QString& help) {
        QComboBox* const made = makeMenu(name, help, this);
        made->addItems(items);
        connect(made, &QComboBox::activated, this, &JoystickPanel::showOther);
        return made;
    };
    joystick_ = menu({"1", "2"}, tr("Joystick"), tr("Which of the two"));
    place(*row, tr("Joystick"), joystick_);
    axis_ = menu({"X", "Y", "Z", "U", "V", "R"}, tr("Axis"), tr("The axis whose messages are set here"));
    place(*row, tr("Axis"), axis_);
    events_ = new ListChooser(tr("message"), tr(" of the axis"), tr("sends nothing"), this);
    connect(events_, &ListChooser::chosen, this, [this] {
        models().edits.endOfGesture();
        refresh();
    });
    connect(events_, &ListChooser::asked, this, [this](ListWork work) {
        std::size_t chosen = events_->place();
        changeAxis([&](std::vector<AxisEvent>& events) {
            doWork(work, events, chosen, [] { return AxisEvent{ValueEventFields::fresh()}; });
            events_->setPlace(chosen);
        });
    });
    row->addStretch(1);
    column_->addLayout(row);
    column_->addWidget(events_);
    event_ = new ValueEventFields(models(), tr(" of the axis"), this);
    connect(event_, &ValueEventFields::edited, this, [this] {
        changeAxisEvent([this](AxisEvent& event) {
            const std::int32_t before = event.event.greatestValue();
            event.event = event_->event();
            if (event.max == before) { // all that it can carry, as before
                event.max = event.event.greatestValue();
            }
        });
    });
    column_->addWidget(event_);
    auto* const ends = new QHBoxLayout;
    ends->setSpacing(grid(1));
    const auto field = [&](const QString& caption, const QString& name, const QString& help,
                           std::int32_t AxisEvent::*which) {
        auto* const made = new NumberField(this);
        made->describe(name, help);
        connect(made, &NumberField::moved, this,
                [this, which](int value) { changeAxisEvent([=](AxisEvent& event) { event.*which = value; }); });
        connect(made, &NumberField::letGo, this, [this] { models().edits.endOfGesture(); });
        place(*ends, caption, made);
        return made;
    };
    min_ = field(tr("From"), tr("From"), tr("The value at one end of the axis"), &AxisEvent::min);
    max_ = field(tr("To"), tr("To"), tr("The value at the other end; below the first it is mirrored"), &AxisEvent::max);
    offset_ = field(tr("plus"), tr("Offset"), tr("Added to each value"), &AxisEvent::offset);
    ends->addStretch(1);
    column_->addLayout(ends);
}

void JoystickPanel::makeButtons() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(grid(1));
    auto* const caption = new QLabel(tr("Button"), this);
    caption->setObjectName("Dim");
    row->addWidget(caption);
    button_ = new NumberField(this);
    button_->setRange(0, JoystickModel::buttons - 1);
    button_->setText([](int button) { return QString::number(button + 1); });
    button_->describe(tr("Button"), tr("The button whose functions are set here"));
    connect(button_, &NumberField::moved, this, &JoystickPanel::showOther);
    row->addWidget(button_);
    row->addStretch(1);
    column_->addLayout(row);
    entries_ = new EntriesEditor(models(), tr("button"), this);
    connect(entries_, &EntriesEditor::edited, this, [this] {
        models().joysticks.putButton({{joystick_->currentIndex(), button_->value()}, entries_->entries()});
    });
    column_->addWidget(entries_);
}

void JoystickPanel::showOther() {
    events_->setPlace(0);
    entries_->startOver();
    refresh();
}

void JoystickPanel::refresh() {
    const JoystickMap& map = models().joysticks.map();
    const int joystick = joystick_->currentIndex();
    view_->setJoystick(joystick);
    const AxisConfiguration* const axis = map.axes.find({joystick, axis_->currentIndex()});
    QStringList texts;
    if (axis != nullptr) {
        for (const AxisEvent& event : axis->events) {
            texts << kindText(event.event.message);
        }
    }
    events_->showThings(texts);
    const AxisEvent event = texts.isEmpty() ? AxisEvent{} : axis->events[events_->place()];
    event_->setEvent(event.event);
    const int most = std::max(127, event.event.greatestValue());
    min_->showValue(0, most, event.min);
    max_->showValue(0, most, event.max);
    offset_->showValue(-most, most, event.offset);
    for (QWidget* const each : std::initializer_list<QWidget*>{event_, min_, max_, offset_}) {
        each->setEnabled(!texts.isEmpty());
    }
    const JoystickButtonConfiguration* const button = map.buttons.find({joystick, button_->value()});
    entries_->setEntries(button != nullptr ? button->entries : std::vector<Backend::ComputerInput::FunctionEntry>{});
    line_->setText(mappings());
    showPresetName();
}

QString JoystickPanel::mappings() {
    QStringList parts;
    const auto& map = models().joysticks.map();
    for (const JoyAxisElementId& id : idsOf(map.axes)) {
        QStringList events;
        for (const AxisEvent& event : map.axes.find(id)->events) {
            events << tr("%1 from %2 to %3")
                          .arg(QString::fromStdString(event.event.message.getEventNameWithCcAndNoteDetail()))
                          .arg(event.min)
                          .arg(event.max);
        }
        if (id.joystick == joystick_->currentIndex() && !events.isEmpty()) {
            parts << tr("%1: %2").arg(axis_->itemText(id.axis), events.join(", "));
        }
    }
    for (const JoyButtonElementId& id : idsOf(map.buttons)) {
        for (const auto& entry : map.buttons.find(id)->entries) {
            if (const auto& function = entry.down ? entry.down : entry.up;
                function && id.joystick == joystick_->currentIndex()) {
                parts << tr("%1: %2").arg(id.button + 1).arg(longTextOf(*function));
            }
        }
    }
    return parts.isEmpty() ? tr("Nothing is set up for this joystick yet: choose an axis or a button.")
                           : parts.join(" · ");
}

void JoystickPanel::changeAxis(const std::function<void(std::vector<AxisEvent>&)>& work) {
    const JoyAxisElementId id{joystick_->currentIndex(), axis_->currentIndex()};
    const AxisConfiguration* const now = models().joysticks.map().axes.find(id);
    AxisConfiguration after = now != nullptr ? *now : AxisConfiguration{id};
    models().edits.alone([&] {
        work(after.events);
        models().joysticks.putAxis(after);
    });
}

void JoystickPanel::changeAxisEvent(const std::function<void(AxisEvent&)>& work) {
    const AxisConfiguration* const now =
        models().joysticks.map().axes.find({joystick_->currentIndex(), axis_->currentIndex()});
    if (now != nullptr && events_->place() < now->events.size()) {
        AxisConfiguration after = *now;
        work(after.events[events_->place()]);
        models().joysticks.putAxis(after);
    }
}

} // namespace Desktop
