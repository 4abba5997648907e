#include "desktop/panels/OscillatorStrip.h"

#include "desktop/Palette.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/MessageKinds.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"
#include "desktop/widgets/WaveView.h"
#include "generators/OscillatorSpeed.h"
#include "input/ValueEvent.h"
#include "values/Ticks.h"
#include "values/TimeIntervals.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using namespace Backend::Oscillators;

namespace {

constexpr int longestPeriod = 30720; // ticks that can be set here
constexpr int most = 16383;

double heightOf(OscillatorType type, double phase) {
    switch (type) {
    case OscillatorType::triangle:
        return phase < 0.5 ? phase * 2 : 2 - phase * 2;
    case OscillatorType::saw:
        return phase;
    case OscillatorType::pulse:
        return phase < 0.5 ? 1 : 0;
    case OscillatorType::random: // steps that look like chance and stay as they are
        return std::abs(std::fmod(std::sin(std::floor(phase * 8) * 12.9898) * 43758.5453, 1.0));
    default:
        return 0.5 + 0.5 * std::sin(phase * 2 * std::numbers::pi);
    }
}

int greatestOf(const MidiMessage& message) {
    Backend::ValueEvent event;
    event.message = message;
    return event.greatestValue();
}

} // namespace

OscillatorStrip::OscillatorStrip(Models& models, int oscillator, QWidget* parent)
    : Strip(parent), models_(models), place_(oscillator) {
    setAccessibleName(tr("Oscillator %1").arg(oscillator + 1));
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(grid(2), grid(2), grid(2), grid(2));
    all->setSpacing(grid(1));
    makeHead();
    makeSpeed(addRow());
    wave_ = new WaveView(this);
    wave_->describe(tr("Wave of oscillator %1").arg(oscillator + 1),
                    tr("Two periods of the wave, and where it is now"));
    all->addWidget(wave_);
    makeMessage(addRow());
    makeWay(addRow());
    makeSending(addRow());
    connect(&models.settings, &SettingsModel::settingChanged, this, [this](Gui::ChangedSetting setting, int) {
        if (setting == Gui::ChangedSetting::tempo) {
            speed_->update();
        }
    });
    refresh();
}

void OscillatorStrip::name(QWidget& widget, const QString& text, const QString& help) const {
    widget.setAccessibleName(tr("%1 of oscillator %2").arg(text).arg(place_ + 1));
    widget.setStatusTip(help);
    widget.setFocusPolicy(Qt::TabFocus);
}

QComboBox* OscillatorStrip::makeMenu(const QStringList& items, const QString& text, const QString& help, Set set) {
    auto* const made = new MenuBox(this);
    made->addItems(items);
    made->setMinimumWidth(grid(20)); // in a narrow panel they give way
    name(*made, text, help);
    connect(made, &QComboBox::activated, this, [this, text, set = std::move(set)](int index) {
        models_.edits.alone([&] { change(text, [&](Oscillator& o) { set(o, index); }); });
    });
    return made;
}

NumberField* OscillatorStrip::makeField(int min, int max, const QString& text, const QString& help, Set set) {
    auto* const made = new NumberField(this);
    made->setRange(min, max);
    name(*made, text, help);
    connect(made, &NumberField::moved, this,
            [this, text, set = std::move(set)](int value) { change(text, [&](Oscillator& o) { set(o, value); }); });
    connect(made, &NumberField::letGo, this, [this] { models_.edits.endOfGesture(); });
    return made;
}

void OscillatorStrip::add(QHBoxLayout& row, const QString& caption, QWidget* widget) {
    if (!caption.isEmpty()) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        row.addWidget(label);
    }
    row.addWidget(widget);
}

QHBoxLayout& OscillatorStrip::addRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(grid(1));
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    return *row;
}

void OscillatorStrip::makeHead() {
    QHBoxLayout& row = addRow();
    select_ = new QToolButton(this);
    select_->setObjectName("Flat");
    select_->setText(QString::number(place_ + 1));
    select_->setCheckable(true);
    name(*select_, tr("Selection"), tr("Keys that change the selected oscillator act on it from then on"));
    connect(select_, &QToolButton::clicked, this, [this] {
        select_->setChecked(now().selected); // until the backend tells
        models_.oscillators.select(place_);
    });
    row.addWidget(select_);
    type_ = makeMenu({tr("sine"), tr("triangle"), tr("saw"), tr("pulse"), tr("random")}, tr("Wave"), tr("Its shape"),
                     [](Oscillator& o, int i) { o.type = static_cast<OscillatorType>(i); });
    row.addWidget(type_);
    row.addStretch(1);
    play_ = new QPushButton(this);
    play_->setCheckable(true);
    play_->setObjectName("Small");
    name(*play_, tr("Start and stop"), tr("Starts or stops it; started again it goes on where it was"));
    connect(play_, &QPushButton::clicked, this, [this](bool on) { models_.oscillators.play(place_, on); });
    row.addWidget(play_);
    auto* const remove = new QPushButton("−", this);
    remove->setObjectName("Small");
    name(*remove, tr("Removal"), tr("Removes the oscillator"));
    connect(
        remove, &QPushButton::clicked, this, [this] { models_.oscillators.remove(place_); }, Qt::QueuedConnection);
    row.addWidget(remove);
}

void OscillatorStrip::makeSpeed(QHBoxLayout& row) {
    speedMode_ = makeMenu({tr("by note value"), tr("by time")}, tr("Kind of speed"),
                          tr("Whether its speed is set, and changed by keys, in note values or in time"),
                          [](Oscillator& o, int i) { o.steppedSpeed = i == 0; });
    add(row, tr("speed"), speedMode_);
    QStringList names;
    for (const std::int32_t ticks : speedLengths()) {
        names << QString::fromStdString(timeIntervalName(ticks));
    }
    names << tr("other");
    length_ = makeMenu(names, tr("Speed"), tr("The length of one wave as a note value"), [](Oscillator& o, int i) {
        if (static_cast<std::size_t>(i) < speedLengths().size()) {
            o.speed = speedLengths()[static_cast<std::size_t>(i)];
        }
    });
    row.addWidget(length_);
    speed_ = makeField(1, longestPeriod, tr("Period"), tr("The length of one wave, at the tempo that the program has"),
                       [](Oscillator& o, int v) { o.speed = v; });
    speed_->setText([this](int ticks) {
        if (now().steppedSpeed) {
            return tr("%1 ticks").arg(ticks);
        }
        const double seconds = ticks * 60.0 / Backend::ticksPerQuarter / std::max(1, models_.settings.tempo());
        return seconds < 1 ? tr("%1 ms").arg(std::lround(seconds * 1000)) : tr("%1 s").arg(seconds, 0, 'f', 2);
    });
    row.addWidget(speed_);
    row.addStretch(1);
}

void OscillatorStrip::makeMessage(QHBoxLayout& row) {
    event_ = makeMenu({}, tr("Message"), tr("What it moves"), [this](Oscillator& o, int) {
        const int before = greatestOf(o.midiMessage);
        o.midiMessage = MidiMessage(messageKindOf(*event_), o.midiMessage.getD1());
        const int now = greatestOf(o.midiMessage);
        o.max = o.max == before || o.max > now ? now : o.max;
        o.min = std::min(o.min, now);
    });
    addMessageKinds(*event_, OfKinds::withChannel);
    row.addWidget(event_);
    number_ = makeField(0, 127, tr("Controller"), tr("Which controller or which key"), [](Oscillator& o, int v) {
        o.midiMessage = MidiMessage(o.midiMessage.getMessageType(), static_cast<std::int8_t>(v));
    });
    row.addWidget(number_);
    min_ = makeField(0, most, tr("Lower end"), tr("Its value at the bottom"), [](Oscillator& o, int v) { o.min = v; });
    add(row, tr("from"), min_);
    max_ = makeField(0, most, tr("Upper end"), tr("Its value at the top; below the other the wave is mirrored"),
                     [](Oscillator& o, int v) { o.max = v; });
    add(row, tr("to"), max_);
    row.addStretch(1);
}

void OscillatorStrip::makeWay(QHBoxLayout& row) {
    output_ = makeField(0, 127, tr("Output"), tr("The output it plays on"),
                        [](Oscillator& o, int v) { o.output = static_cast<std::int8_t>(v - 1); });
    output_->setText([this](int value) { return models_.ports.outputName(value - 1); });
    add(row, tr("output"), output_);
    channel_ = makeField(0, 16, tr("Channel"), tr("The channel it plays on"),
                         [](Oscillator& o, int v) { o.channel = static_cast<std::int8_t>(v - 1); });
    channel_->setText([](int value) { return value == 0 ? tr("default") : QString::number(value); });
    add(row, tr("channel"), channel_);
    zone_ = makeField(0, 128, tr("Zone"), tr("The zone it plays in"),
                      [](Oscillator& o, int v) { o.zone = static_cast<std::int8_t>(v - 1); });
    zone_->setText([](int value) { return value == 0 ? tr("none") : QString::number(value); });
    add(row, tr("zone"), zone_);
    row.addStretch(1);
}

void OscillatorStrip::makeSending(QHBoxLayout& row) {
    detail_ = makeField(1, 999, tr("Detail"), tr("Of sine, triangle and saw only every so manieth change is sent"),
                        [](Oscillator& o, int v) { o.detail = v; });
    add(row, tr("sends one change in"), detail_);
    stop_ = makeField(-1, most, tr("Value at its end"), tr("What is sent when it stops"),
                      [](Oscillator& o, int v) { o.stopValue = v; });
    stop_->setText([](int value) { return value < 0 ? tr("nothing") : QString::number(value); });
    add(row, tr("at the end"), stop_);
    row.addStretch(1);
}

Oscillator OscillatorStrip::now() const {
    const Oscillator* const found = models_.oscillators.list().find(OscId{place_});
    return found != nullptr ? *found : Oscillator{};
}

void OscillatorStrip::change(const QString& text, const std::function<void(Oscillator&)>& work) {
    Oscillator after = now();
    work(after);
    models_.oscillators.change(tr("%1 of oscillator %2").arg(text).arg(place_ + 1), after);
}

void OscillatorStrip::refresh() {
    const Oscillator oscillator = now();
    const OscillatorType type = oscillator.type;
    wave_->setWave([type](double phase) { return heightOf(type, phase); }, oscillator.min, oscillator.max);
    wave_->setRunning(oscillator.playing);
    select_->setChecked(oscillator.selected);
    play_->setChecked(oscillator.playing);
    play_->setText(oscillator.playing ? "■" : "▶");
    type_->setCurrentIndex(std::max(0, static_cast<int>(type)));
    const auto lengths = speedLengths();
    const auto place = std::find(lengths.begin(), lengths.end(), oscillator.speed) - lengths.begin();
    length_->setCurrentIndex(static_cast<int>(place));
    length_->setVisible(oscillator.steppedSpeed);
    speedMode_->setCurrentIndex(oscillator.steppedSpeed ? 0 : 1);
    speed_->showValue(1, longestPeriod, oscillator.speed);
    const bool isNamed = static_cast<std::size_t>(place) < lengths.size();
    speed_->setVisible(!oscillator.steppedSpeed || !isNamed);
    const MessageType message = oscillator.midiMessage.getMessageType();
    showMessageKind(*event_, message);
    number_->setText([message](int value) { return firstByteText(message, value); });
    number_->setValue(oscillator.midiMessage.getD1());
    // Elsewhere the value stands in the first byte.
    number_->setVisible(message == MessageType::controllerChange);
    const int greatest = greatestOf(oscillator.midiMessage);
    min_->showValue(0, greatest, oscillator.min);
    max_->showValue(0, greatest, oscillator.max);
    output_->setValue(oscillator.output + 1);
    channel_->setValue(oscillator.channel + 1);
    zone_->setValue(oscillator.zone + 1);
    detail_->setEnabled(type != OscillatorType::pulse && type != OscillatorType::random);
    detail_->showValue(1, 999, oscillator.detail);
    stop_->showValue(-1, greatest, oscillator.stopValue);
}

void OscillatorStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Desktop::palette().line, 1));
    painter.setBrush(Desktop::palette().raised);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
}

void OscillatorStrip::setValue(int value) {
    wave_->setValue(value);
}

} // namespace Desktop
