#include "desktop/panels/JoystickPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/FunctionForm.h"
#include "desktop/widgets/ColumnArea.h"
#include "desktop/widgets/JoystickView.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"
#include "input/JoystickMessageManager.h"

#include <QGridLayout>

namespace Desktop {

using namespace Backend::Joystick;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;

namespace {
constexpr MessageType axisEvents[]{MessageType::none, MessageType::controllerChange, MessageType::pitchBend,
                                   MessageType::channelPressure, MessageType::programChange};
}

JoystickPanel::JoystickPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::joystick, tr("Joystick"), tr("What sticks and buttons do"), models, parent) {
    view_ = new JoystickView(models.joysticks, this);
    view_->describe(tr("How the joystick stands"), tr("Its axes and its buttons, as they are now"));
    auto* const table = new QGridLayout;
    table->setHorizontalSpacing(grid(2));
    table->setVerticalSpacing(grid(1));
    const auto place = [&](int row, int column, const QString& caption, QWidget* widget, const QString& help) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        widget->setAccessibleName(caption);
        widget->setStatusTip(help);
        widget->setFocusPolicy(Qt::TabFocus);
        table->addWidget(label, row, column * 2);
        table->addWidget(widget, row, column * 2 + 1);
    };
    const auto box = [&](const QStringList& items) {
        auto* const made = makeMenu({}, {}, this);
        made->addItems(items);
        return made;
    };
    const auto field = [&](int min, int max) {
        auto* const made = new NumberField(this);
        made->setRange(min, max);
        return made;
    };
    joystick_ = box({"1", "2"});
    place(0, 0, tr("Joystick"), joystick_, tr("Which of the two"));
    axis_ = box({"X", "Y", "Z", "U", "V", "R"});
    place(0, 1, tr("Axis"), axis_, tr("The axis whose message is set here"));
    event_ = box(
        {tr("sends nothing"), tr("Controller Change"), tr("Pitch Bend"), tr("Channel Pressure"), tr("Program Change")});
    place(1, 0, tr("Sends"), event_, tr("The message that carries the position of the axis"));
    number_ = field(0, 127);
    place(1, 1, tr("Controller"), number_, tr("Which controller the axis sends"));
    min_ = field(0, 16383);
    place(2, 0, tr("From"), min_, tr("The value at one end of the axis"));
    max_ = field(0, 16383);
    place(2, 1, tr("To"), max_, tr("The value at the other end; below it, it is mirrored"));
    button_ = field(0, 31);
    button_->setText([](int button) { return QString::number(button + 1); });
    place(3, 0, tr("Button"), button_, tr("The button whose functions are set here"));
    table->setColumnStretch(1, 1);
    table->setColumnStretch(3, 1);
    auto* const area = new ColumnArea(this);
    auto* const content = new QWidget(area);
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(grid(2));
    area->setWidget(content);
    body().addWidget(area);
    column->addWidget(view_);
    line_ = new QLabel(this);
    line_->setObjectName("Dim");
    line_->setWordWrap(true);
    column->addWidget(line_);
    column->addLayout(table);
    auto* const forms = new QHBoxLayout;
    forms->setSpacing(grid(2));
    const auto form = [&](const QString& title, const QString& role) {
        auto* const side = new QVBoxLayout;
        auto* const label = new QLabel(title, this);
        label->setObjectName("PanelTitle");
        side->addWidget(label);
        auto* const made = new FunctionForm(this->models(), role, this);
        side->addWidget(made);
        side->addStretch(1);
        forms->addLayout(side, 1);
        return made;
    };
    down_ = form(tr("Button down"), tr("when the button goes down"));
    up_ = form(tr("Button up"), tr("when the button comes up"));
    column->addLayout(forms);
    column->addStretch(1);
    connect(joystick_, &QComboBox::activated, this, &JoystickPanel::refresh);
    connect(axis_, &QComboBox::activated, this, &JoystickPanel::refresh);
    connect(button_, &NumberField::moved, this, &JoystickPanel::refresh);
    connect(event_, &QComboBox::activated, this, &JoystickPanel::storeAxis);
    for (NumberField* const each : {number_, min_, max_}) {
        connect(each, &NumberField::letGo, this, &JoystickPanel::storeAxis);
    }
    connect(down_, &FunctionForm::edited, this, &JoystickPanel::storeButton);
    connect(up_, &FunctionForm::edited, this, &JoystickPanel::storeButton);
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

void JoystickPanel::refresh() {
    if (storing_) {
        return;
    }
    const int joystick = joystick_->currentIndex();
    view_->setJoystick(joystick);
    const AxisConfiguration* const axis = models().joysticks.map().axes.find({joystick, axis_->currentIndex()});
    const AxisEvent event = axis != nullptr && !axis->events.empty() ? axis->events.front() : AxisEvent{};
    const auto type = std::find(std::begin(axisEvents), std::end(axisEvents), event.event.message.getMessageType());
    event_->setCurrentIndex(type == std::end(axisEvents) ? 0 : static_cast<int>(type - std::begin(axisEvents)));
    number_->setValue(event.event.message.getD1());
    min_->setValue(event.min);
    max_->setValue(event.max);
    const JoystickButtonConfiguration* const button =
        models().joysticks.map().buttons.find({joystick, button_->value()});
    const Backend::ComputerInput::FunctionEntry entry = button != nullptr && !button->entries.empty()
                                                            ? button->entries.front()
                                                            : Backend::ComputerInput::FunctionEntry{};
    down_->setFunction(entry.down);
    up_->setFunction(entry.up);
    line_->setText(mappings());
    number_->setEnabled(event.event.message.isControllerChange());
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

void JoystickPanel::storeAxis() {
    AxisConfiguration axis{{joystick_->currentIndex(), axis_->currentIndex()}};
    const MessageType type = axisEvents[event_->currentIndex()];
    if (type != MessageType::none) {
        AxisEvent event;
        event.event.message =
            MidiMessage(type, static_cast<std::int8_t>(type == MessageType::controllerChange ? number_->value() : 0));
        event.min = min_->value();
        event.max = type == MessageType::pitchBend && max_->value() == 127 ? 16383 : max_->value();
        axis.events.push_back(event);
    }
    models().joysticks.putAxis(axis);
}

void JoystickPanel::storeButton() {
    storing_ = true;
    models().joysticks.putButton(
        {{joystick_->currentIndex(), button_->value()}, {{false, down_->function(), up_->function()}}});
    storing_ = false;
}

} // namespace Desktop
