#include "desktop/panels/OutputPanel.h"

#include "core/QelMessageManager.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/GeneralMidiSounds.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/MenuButton.h"
#include "desktop/widgets/MusicKeyboard.h"
#include "desktop/widgets/NumberField.h"
#include "values/ControllerNames.h"
#include "values/QelMidiMessage.h"

#include <QGridLayout>
#include <QScrollArea>

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

namespace {

QString nameOfZone(int zone) {
    return zone < 0 ? OutputPanel::tr("no zone") : OutputPanel::tr("zone %1").arg(zone + 1);
}

} // namespace

OutputPanel::OutputPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::output, tr("Output"),
                 tr("Plays by mouse and by touch: the lower a key is struck, the louder"), models, parent) {
    programs_ = new QMenu(this);
    for (int family = 0; family < 16; ++family) {
        QMenu* const sub = programs_->addMenu(tr(generalMidiFamilies[static_cast<std::size_t>(family)]));
        for (int i = 0; i < 8; ++i) {
            const int program = family * 8 + i;
            sub->addAction(
                QStringLiteral("%1  %2").arg(program).arg(tr(generalMidiSounds[static_cast<std::size_t>(program)])),
                this, [this, program] {
                    this->models().backend().postPlayMidi(QelMidiMessage(
                        MessageType::programChange, static_cast<std::int8_t>(program), 0,
                        static_cast<std::int8_t>(channel_), QelMidiMessage::DEFAULT_OUTPUT,
                        static_cast<std::int8_t>(zone_), QelMidiMessage::DEFAULT_INPUT, Backend::noTicks));
                });
        }
    }
    auto* const sound =
        new MenuButton(tr("General MIDI sound"), tr("Chooses a sound by its name in General MIDI"), programs_, this);
    sound->setValue(tr("GM sound"));
    addHeadWidget(sound);
    auto* const zones = new QMenu(this);
    zoneButton_ =
        new MenuButton(tr("Zone of the music keyboard"), tr("The zone that this keyboard plays in"), zones, this);
    connect(zones, &QMenu::aboutToShow, this, [this, zones] {
        zones->clear();
        const auto offer = [&](int zone) { zones->addAction(nameOfZone(zone), this, [this, zone] { setZone(zone); }); };
        constexpr int always = 4; // those that keys usually play in
        for (int zone = -1; zone < always; ++zone) {
            offer(zone);
        }
        this->models().zones.zones().forEach([&](const Backend::Zones::Zone& zone) {
            if (zone.id >= always) {
                offer(zone.id);
            }
        });
    });
    setZone(-1);
    addHeadWidget(zoneButton_);
    controllersButton_ = makeButton(tr("CC"), tr("Controllers"), tr("Shows all controllers with their values"), this);
    controllersButton_->setCheckable(true);
    connect(controllersButton_, &QToolButton::clicked, this, &OutputPanel::controllersAsked);
    addHeadWidget(controllersButton_);

    controllers_ = new QWidget(this);
    controllers_->hide();
    body().addWidget(controllers_);
    keyboard_ = new MusicKeyboard(this);
    keyboard_->describe(tr("Music keyboard"),
                        tr("Strike a key low for loud; drag for a glissando. By keyboard: arrows and Space"));
    connect(keyboard_, &MusicKeyboard::struck, this, [this](int note, int velocity) { play(true, note, velocity); });
    connect(keyboard_, &MusicKeyboard::lifted, this, [this](int note) { play(false, note, 64); });
    body().addWidget(keyboard_, 1);
    connect(&models.playing, &PlayingModel::noteChanged, this, &OutputPanel::light);
    connect(&models.playing, &PlayingModel::cleared, keyboard_, &MusicKeyboard::clearLit);
    connect(&models.keys, &Model::changed, this, &OutputPanel::refresh);
    connect(&models.zones, &Model::changed, this, &OutputPanel::refresh);
    connect(&models.playing, &PlayingModel::controllerSent, this, [this](const QelMidiMessage& message) {
        if (const auto found = fields_.find(message.getD1()); found != fields_.end()) {
            found->second->setValue(message.getD2());
        }
    });
    refresh();
}

void OutputPanel::setZone(int zone) {
    zone_ = zone;
    zoneButton_->setValue(nameOfZone(zone));
}

void OutputPanel::play(bool on, int note, int velocity) {
    models().backend().postPlayMidi(QelMidiMessage(
        on ? MessageType::noteOn : MessageType::noteOff, static_cast<std::int8_t>(note),
        static_cast<std::int8_t>(velocity), static_cast<std::int8_t>(channel_), QelMidiMessage::DEFAULT_OUTPUT,
        static_cast<std::int8_t>(zone_), QelMidiMessage::DEFAULT_INPUT, Backend::noTicks));
}

void OutputPanel::light(int note) {
    const int channel = models().playing.channelOf(note);
    keyboard_->setLit(note, channel < 0 ? QColor() : Desktop::palette().inTurn(channel));
}

void OutputPanel::keyboardReleased() {
    keyboard_->releaseAll();
}

void OutputPanel::clearHilight() {
    keyboard_->clearLit();
}

void OutputPanel::refresh() {
    for (int note = 0; note < 128; ++note) {
        light(note);
    }
    std::map<int, QString> letters;
    for (const auto& [key, configuration] : models().keys.map()) {
        if (key.getModifiers() != 0) {
            continue;
        }
        if (const auto note = models().keys.noteOf(key)) {
            const int sounds = note->note + models().zones.transposeOf(note->zone);
            const QString name = QString::fromStdString(key.getName());
            if (name.size() == 1 && sounds >= 0 && sounds < 128) {
                letters[sounds] = name;
            }
        }
    }
    keyboard_->setLetters(std::move(letters));
}

void OutputPanel::buildControllers() {
    auto* const all = new QVBoxLayout(controllers_);
    all->setContentsMargins(0, 0, 0, 0);
    auto* const area = new QScrollArea(controllers_);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    auto* const content = new QWidget(area);
    auto* const table = new QGridLayout(content);
    table->setSpacing(grid(1));
    constexpr int columns = 6;
    for (int controller = 0; controller < 120; ++controller) {
        auto* const field = new NumberField(content);
        const QString name = QString::fromStdString(Backend::MidiEngine::controllerName(controller));
        field->describe(tr("Controller %1, %2").arg(controller).arg(name),
                        tr("%1: %2. Moving it sends it").arg(controller).arg(name));
        connect(field, &NumberField::moved, this, [this, controller](int value) {
            models().backend().postPlayMidi(QelMidiMessage(
                MessageType::controllerChange, static_cast<std::int8_t>(controller), static_cast<std::int8_t>(value),
                static_cast<std::int8_t>(channel_), QelMidiMessage::DEFAULT_OUTPUT, static_cast<std::int8_t>(zone_),
                QelMidiMessage::DEFAULT_INPUT, Backend::noTicks));
        });
        fields_[controller] = field;
        auto* const label = new ElidedLabel(QStringLiteral("%1 %2").arg(controller).arg(name), content);
        label->setObjectName("Dim");
        field->setFixedWidth(grid(11));
        const int row = controller / columns;
        const int column = controller % columns * 2;
        table->addWidget(field, row, column);
        table->addWidget(label, row, column + 1);
    }
    area->setWidget(content);
    area->setMinimumHeight(grid(24));
    all->addWidget(area);
}

void OutputPanel::showControllers(bool on) {
    if (on && fields_.empty()) {
        buildControllers();
    }
    controllers_->setVisible(on);
    controllersButton_->setChecked(on);
}

} // namespace Desktop
