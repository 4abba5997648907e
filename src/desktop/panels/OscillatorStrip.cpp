#include "desktop/panels/OscillatorStrip.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/NumberField.h"
#include "desktop/widgets/WaveView.h"
#include "values/Ticks.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <cmath>
#include <numbers>
#include <utility>

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using namespace Backend::Oscillators;

namespace {

struct NoteLength {
    const char* name;
    int ticks;
};
constexpr NoteLength lengths[]{{"8 bars", 15360}, {"4 bars", 7680}, {"2 bars", 3840}, {"1/1", 1920},
                               {"1/2", 960},      {"1/4", 480},     {"1/4 T", 320},   {"1/8", 240},
                               {"1/8 T", 160},    {"1/16", 120},    {"1/16 T", 80},   {"1/32", 60}};

constexpr MessageType targets[]{MessageType::controllerChange, MessageType::pitchBend, MessageType::channelPressure,
                                MessageType::programChange};

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

} // namespace

OscillatorStrip::OscillatorStrip(Models& models, int oscillator, QWidget* parent)
    : QWidget(parent), models_(models), place_(oscillator) {
    setAccessibleName(tr("Oscillator %1").arg(oscillator + 1));
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(grid(2), grid(2), grid(2), grid(2));
    all->setSpacing(grid(1));
    auto* const top = new QHBoxLayout;
    top->setSpacing(grid(1));
    auto* const number = new QLabel(QString::number(oscillator + 1), this);
    number->setObjectName("PanelTitle");
    top->addWidget(number);
    const auto named = [&](QWidget* widget, const QString& name, const QString& help) {
        widget->setAccessibleName(tr("%1 of oscillator %2").arg(name).arg(place_ + 1));
        widget->setStatusTip(help);
        widget->setFocusPolicy(Qt::TabFocus);
    };
    const auto box = [&](const QStringList& items, const QString& name, const QString& help,
                         std::function<void(Oscillator&, int)> set) {
        auto* const made = new QComboBox(this);
        made->addItems(items);
        made->setMinimumWidth(grid(20)); // in a narrow panel they give way
        named(made, name, help);
        connect(made, &QComboBox::activated, this, [this, name, set = std::move(set)](int index) {
            change(name, [&](Oscillator& o) { set(o, index); });
            models_.edits.endOfGesture();
        });
        return made;
    };
    const auto field = [&](int min, int max, const QString& name, const QString& help,
                           std::function<void(Oscillator&, int)> set) {
        auto* const made = new NumberField(this);
        made->setRange(min, max);
        named(made, name, help);
        made->describe(made->accessibleName(), help);
        connect(made, &NumberField::moved, this,
                [this, name, set = std::move(set)](int value) { change(name, [&](Oscillator& o) { set(o, value); }); });
        connect(made, &NumberField::letGo, this, [this] { models_.edits.endOfGesture(); });
        return made;
    };
    type_ = box({tr("sine"), tr("triangle"), tr("saw"), tr("pulse"), tr("random")}, tr("Wave"), tr("Its shape"),
                [](Oscillator& o, int i) { o.type = static_cast<OscillatorType>(i); });
    top->addWidget(type_);
    speedMode_ = box({tr("by note value"), tr("by time")}, tr("Kind of speed"),
                     tr("Whether its speed is set, and changed by keys, in note values or in time"),
                     [](Oscillator& o, int i) { o.steppedSpeed = i == 0; });
    top->addWidget(speedMode_);
    QStringList names;
    for (const NoteLength& each : lengths) {
        names << QString::fromLatin1(each.name);
    }
    names << tr("other");
    length_ = box(names, tr("Speed"), tr("The length of one wave as a note value"), [](Oscillator& o, int i) {
        if (static_cast<std::size_t>(i) < std::size(lengths)) {
            o.speed = lengths[i].ticks;
        }
    });
    top->addWidget(length_);
    speed_ = field(1, 15360, tr("Period"), tr("The length of one wave, at the tempo that the program has"),
                   [](Oscillator& o, int v) { o.speed = v; });
    speed_->setText([this](int ticks) {
        if (now().steppedSpeed) {
            return tr("%1 ticks").arg(ticks);
        }
        const double seconds = ticks * 60.0 / Backend::ticksPerQuarter / std::max(1, models_.settings.tempo());
        return seconds < 1 ? tr("%1 ms").arg(std::lround(seconds * 1000)) : tr("%1 s").arg(seconds, 0, 'f', 2);
    });
    top->addWidget(speed_);
    top->addStretch(1);
    play_ = new QPushButton(this);
    play_->setCheckable(true);
    play_->setObjectName("Small");
    named(play_, tr("Start and stop"), tr("Starts or stops it; started again it goes on where it was"));
    connect(play_, &QPushButton::clicked, this, [this](bool on) { models_.oscillators.play(place_, on); });
    top->addWidget(play_);
    auto* const remove = new QPushButton("−", this);
    remove->setObjectName("Small");
    named(remove, tr("Removal"), tr("Removes the oscillator"));
    connect(
        remove, &QPushButton::clicked, this, [this] { models_.oscillators.remove(place_); }, Qt::QueuedConnection);
    top->addWidget(remove);
    all->addLayout(top);
    wave_ = new WaveView(this);
    wave_->describe(tr("Wave of oscillator %1").arg(oscillator + 1),
                    tr("Two periods of the wave, and where it is now"));
    all->addWidget(wave_);
    QHBoxLayout* bottom = nullptr;
    const auto row = [&] {
        bottom = new QHBoxLayout;
        bottom->setSpacing(grid(1));
        all->addLayout(bottom);
    };
    const auto add = [&](const QString& text, QWidget* widget) {
        if (!text.isEmpty()) {
            auto* const label = new QLabel(text, this);
            label->setObjectName("Dim");
            bottom->addWidget(label);
        }
        bottom->addWidget(widget);
    };
    row();
    QStringList events;
    for (const MessageType type : targets) {
        events << QString::fromStdString(MidiMessage::getEventNameStatic(type));
    }
    event_ = box(events, tr("Message"), tr("What it moves"), [](Oscillator& o, int i) {
        o.midiMessage = MidiMessage(targets[i], o.midiMessage.getD1());
        o.max = targets[i] == MessageType::pitchBend ? 16383 : std::min(o.max, 127);
        o.min = std::min(o.min, targets[i] == MessageType::pitchBend ? 16383 : 127);
    });
    add({}, event_);
    number_ = field(0, 127, tr("Controller"), tr("Which controller"), [](Oscillator& o, int v) {
        o.midiMessage = MidiMessage(o.midiMessage.getMessageType(), static_cast<std::int8_t>(v));
    });
    add({}, number_);
    min_ = field(0, 16383, tr("Lower end"), tr("Its value at the bottom"), [](Oscillator& o, int v) { o.min = v; });
    add(tr("from"), min_);
    max_ = field(0, 16383, tr("Upper end"), tr("Its value at the top"), [](Oscillator& o, int v) { o.max = v; });
    add(tr("to"), max_);
    bottom->addStretch(1);
    row();
    const auto orDefault = [](int value) { return value == 0 ? QObject::tr("default") : QString::number(value); };
    output_ = field(0, 127, tr("Output"), tr("The output it plays on"),
                    [](Oscillator& o, int v) { o.output = static_cast<std::int8_t>(v - 1); });
    output_->setText([this](int value) { return models_.ports.outputName(value - 1); });
    add(tr("output"), output_);
    channel_ = field(0, 16, tr("Channel"), tr("The channel it plays on"),
                     [](Oscillator& o, int v) { o.channel = static_cast<std::int8_t>(v - 1); });
    channel_->setText(orDefault);
    add(tr("channel"), channel_);
    stop_ = field(-1, 16383, tr("Value at its end"), tr("What is sent when it stops"),
                  [](Oscillator& o, int v) { o.stopValue = v; });
    stop_->setText([](int value) { return value < 0 ? QObject::tr("nothing") : QString::number(value); });
    add(tr("at the end"), stop_);
    bottom->addStretch(1);
    connect(&models.settings, &SettingsModel::settingChanged, this, [this](Gui::ChangedSetting setting, int) {
        if (setting == Gui::ChangedSetting::tempo) {
            speed_->update();
        }
    });
    refresh();
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
    play_->setChecked(oscillator.playing);
    play_->setText(oscillator.playing ? "■" : "▶");
    type_->setCurrentIndex(std::max(0, static_cast<int>(type)));
    int place = static_cast<int>(std::size(lengths));
    for (std::size_t i = 0; i < std::size(lengths); ++i) {
        if (lengths[i].ticks == oscillator.speed) {
            place = static_cast<int>(i);
        }
    }
    length_->setCurrentIndex(place);
    length_->setVisible(oscillator.steppedSpeed);
    speedMode_->setCurrentIndex(oscillator.steppedSpeed ? 0 : 1);
    speed_->setValue(oscillator.speed);
    speed_->setVisible(!oscillator.steppedSpeed || place == static_cast<int>(std::size(lengths))); // else it is named
    output_->setValue(oscillator.output + 1);
    stop_->setValue(oscillator.stopValue);
    min_->setValue(oscillator.min);
    max_->setValue(oscillator.max);
    const auto target = std::find(std::begin(targets), std::end(targets), oscillator.midiMessage.getMessageType());
    event_->setCurrentIndex(target == std::end(targets) ? -1 : static_cast<int>(target - std::begin(targets)));
    number_->setValue(oscillator.midiMessage.getD1());
    number_->setEnabled(oscillator.midiMessage.isControllerChange());
    channel_->setValue(oscillator.channel + 1);
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
