#include "desktop/panels/ZonesPanel.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/models/NumberTexts.h"
#include "desktop/widgets/ColumnArea.h"
#include "desktop/widgets/NumberField.h"

#include <QGridLayout>
#include <algorithm>
#include <initializer_list>

namespace Desktop {

ZonesPanel::ZonesPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::zone, tr("Zones"), tr("Regions of the keyboards, each with a transposition of its own"),
                 models, parent) {
    QToolButton* const add = makeButton("+", tr("Add a zone"), tr("Adds a zone"), this);
    connect(add, &QToolButton::clicked, this, [this] { this->models().zones.add(); });
    addHeadWidget(add);
    auto* const area = new ColumnArea(this);
    auto* const holder = new QWidget(area);
    auto* const column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    content_ = new QWidget(holder);
    column->addWidget(content_);
    column->addStretch(1);
    area->setWidget(holder);
    body().addWidget(area);
    connect(&models.zones, &Model::changed, this, &ZonesPanel::refresh);
    connect(&models.keys, &Model::changed, this, &ZonesPanel::refresh);
    connect(&models.layers, &Model::changed, this, &ZonesPanel::refresh);
    connect(&models.joysticks, &Model::changed, this, &ZonesPanel::refresh);
    refresh();
}

QString ZonesPanel::usersOf(int zone) {
    int keys = 0;
    for (const auto& [key, configuration] : models().keys.map()) {
        const auto note = models().keys.noteOf(key);
        keys += note && note->zone == zone ? 1 : 0;
    }
    QStringList layers;
    for (const auto& layer : models().layers.layers()) {
        if (layer.zone == zone) {
            layers << QStringLiteral("L:%1").arg(layer.index + 1);
        }
    }
    int buttons = 0;
    for (const auto& [id, button] : models().joysticks.map().buttons) {
        buttons += std::any_of(button.entries.begin(), button.entries.end(),
                               [zone](const auto& entry) {
                                   const auto event =
                                       entry.down ? entry.down->getMidiEvent() : Backend::MidiEventIdentity{};
                                   return event.isNoteOn() && event.zone == zone;
                               })
                       ? 1
                       : 0;
    }
    QString text = keys == 1 ? tr("1 key") : tr("%1 keys").arg(keys);
    if (buttons > 0) {
        text += ", " + (buttons == 1 ? tr("1 joystick button") : tr("%1 joystick buttons").arg(buttons));
    }
    return text + (layers.isEmpty() ? QString() : " → " + layers.join(", "));
}

void ZonesPanel::refresh() {
    QString shape;
    models().zones.zones().forEach([&](const Backend::Zones::Zone& zone) { shape += QString::number(zone.id) + ' '; });
    if (shape != shape_ || shape.isEmpty()) {
        shape_ = shape;
        fields_.clear();
        names_.clear();
        numbers_.clear();
        users_.clear();
        qDeleteAll(content_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
        delete content_->layout();
        auto* const table = new QGridLayout(content_);
        table->setContentsMargins(0, 0, 0, 0);
        table->setSpacing(grid(1));
        if (shape.isEmpty()) {
            auto* const none =
                new QLabel(tr("There are no zones: notes go to the layers as they are played."), content_);
            none->setObjectName("Dim");
            none->setWordWrap(true);
            table->addWidget(none, 0, 0);
        }
        int row = 0;
        models().zones.zones().forEach([&](const Backend::Zones::Zone& zone) {
            const int id = zone.id;
            auto* const name = makeButton(tr("Zone %1").arg(id + 1), tr("Select zone %1").arg(id + 1),
                                          tr("Keys that change the selected zone act on it from then on"), content_);
            name->setCheckable(true);
            connect(name, &QToolButton::clicked, this, [this, id, name] {
                name->setChecked(true); // one is selected at any time
                models().zones.select(id);
            });
            auto* const number = new NumberField(content_);
            number->setRange(1, 128);
            number->describe(tr("Number of zone %1").arg(id + 1),
                             tr("By which keys and layers know it; one that another zone has is not taken"));
            connect(
                number, &NumberField::letGo, this,
                [this, id, number] {
                    if (number->value() != id + 1) {
                        models().zones.renumber(id, number->value() - 1);
                    }
                },
                Qt::QueuedConnection); // the rows are made anew
            auto* const field = new NumberField(content_);
            field->setRange(-127, 127);
            field->setText(signedText);
            field->setResting(0);
            field->describe(tr("Transposition of zone %1").arg(id + 1),
                            tr("Semitones; a double click sets it back to 0"));
            connect(field, &NumberField::moved, this, [this, id](int value) { models().zones.transpose(id, value); });
            connect(field, &NumberField::letGo, this, [this] { models().edits.endOfGesture(); });
            auto* const users = new QLabel(content_);
            users->setObjectName("Dim");
            auto* const remove = makeButton("−", tr("Remove zone %1").arg(id + 1), tr("Removes the zone"), content_);
            connect(
                remove, &QToolButton::clicked, this, [this, id] { models().zones.remove(id); }, Qt::QueuedConnection);
            int column = 0;
            for (QWidget* const each : std::initializer_list<QWidget*>{name, number, field, users, remove}) {
                table->addWidget(each, row, column++);
            }
            names_[id] = name;
            numbers_[id] = number;
            fields_[id] = field;
            users_[id] = users;
            ++row;
        });
        table->setColumnStretch(3, 1);
        for (QWidget* const each : content_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            each->show();
        }
    }
    models().zones.zones().forEach([&](const Backend::Zones::Zone& zone) {
        fields_[zone.id]->showValue(-127, 127, zone.transpose);
        numbers_[zone.id]->setValue(zone.id + 1);
        names_[zone.id]->setChecked(zone.selected);
        users_[zone.id]->setText(usersOf(zone.id));
    });
}

} // namespace Desktop
