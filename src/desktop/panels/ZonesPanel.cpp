#include "desktop/panels/ZonesPanel.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/ColumnArea.h"
#include "desktop/widgets/NumberField.h"

#include <QGridLayout>

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
    return tr("%n key(s)", nullptr, keys).replace("key(s)", keys == 1 ? tr("key") : tr("keys")) +
           (layers.isEmpty() ? QString() : " → " + layers.join(", "));
}

void ZonesPanel::refresh() {
    QString shape;
    models().zones.zones().forEach([&](const Backend::Zones::Zone& zone) { shape += QString::number(zone.id) + ' '; });
    if (shape != shape_ || shape.isEmpty()) {
        shape_ = shape;
        fields_.clear();
        names_.clear();
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
            connect(name, &QToolButton::clicked, this, [this, id] { models().zones.select(id); });
            auto* const field = new NumberField(content_);
            field->setRange(-127, 127);
            field->setText([](int value) { return (value > 0 ? "+" : "") + QString::number(value); });
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
            table->addWidget(name, row, 0);
            table->addWidget(field, row, 1);
            table->addWidget(users, row, 2);
            table->addWidget(remove, row, 3);
            names_[id] = name;
            fields_[id] = field;
            users_[id] = users;
            ++row;
        });
        table->setColumnStretch(2, 1);
        for (QWidget* const each : content_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            each->show();
        }
    }
    models().zones.zones().forEach([&](const Backend::Zones::Zone& zone) {
        fields_[zone.id]->setValue(zone.transpose);
        names_[zone.id]->setChecked(zone.selected);
        users_[zone.id]->setText(usersOf(zone.id));
    });
}

} // namespace Desktop
