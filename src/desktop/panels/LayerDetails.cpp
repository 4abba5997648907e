#include "desktop/panels/LayerDetails.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/models/NumberTexts.h"
#include "desktop/panels/LayerPattern.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <initializer_list>
#include <utility>

namespace Desktop {

using Backend::Layers::Layer;

namespace {

RelativeFixedValue valueOf(bool relative, int number) {
    return relative ? RelativeFixedValue::relative(number) : RelativeFixedValue::fixed(number);
}

} // namespace

LayerDetails::LayerDetails(Models& models, int layer, Change change, QWidget* parent)
    : QWidget(parent), models_(models), place_(layer), change_(std::move(change)) {
    auto* const table = new QGridLayout(this);
    table->setContentsMargins(0, 0, 0, 0);
    table->setVerticalSpacing(grid(1));
    table->setHorizontalSpacing(grid(2));
    const auto number = [&](const QString& name, const QString& help, int min, int max,
                            std::function<void(Layer&, int)> set, std::function<QString(int)> text = {}) {
        auto* const field = new NumberField(this);
        field->setRange(min, max);
        if (text) {
            field->setText(std::move(text));
        }
        field->describe(tr("%1 of layer %2").arg(name).arg(place_ + 1), help);
        connect(field, &NumberField::moved, this,
                [this, name, set = std::move(set)](int value) { change_(name, [&](Layer& l) { set(l, value); }); });
        connect(field, &NumberField::letGo, this, [this] { models_.edits.endOfGesture(); });
        return field;
    };
    const auto choice = [&](const QString& name, const QString& help, const QStringList& items,
                            std::function<void(Layer&, int)> set) {
        auto* const box = new MenuBox(this);
        box->addItems(items);
        box->setFocusPolicy(Qt::TabFocus);
        box->setAccessibleName(tr("%1 of layer %2").arg(name).arg(place_ + 1));
        box->setStatusTip(help);
        connect(box, &QComboBox::activated, this, [this, name, set = std::move(set)](int index) {
            models_.edits.alone([&] { change_(name, [&](Layer& l) { set(l, index); }); });
        });
        return box;
    };
    const auto captioned = [&](const QString& text) {
        auto* const label = new QLabel(text, this);
        label->setObjectName("Dim");
        return label;
    };
    const auto place = [&](int row, const QString& caption, std::initializer_list<QWidget*> widgets) {
        table->addWidget(captioned(caption), row, 0);
        auto* const box = new QHBoxLayout;
        box->setSpacing(grid(2));
        for (QWidget* const widget : widgets) {
            box->addWidget(widget);
        }
        box->addStretch(1);
        table->addLayout(box, row, 1);
    };
    low_ = number(
        tr("Lowest note"), tr("The lowest note it takes"), 0, 127, [](Layer& l, int v) { l.minNote = Note(v); },
        noteText);
    high_ = number(
        tr("Highest note"), tr("The highest note it takes"), 0, 127, [](Layer& l, int v) { l.maxNote = Note(v); },
        noteText);
    stack_ = new QPushButton(tr("stack"), this);
    stack_->setObjectName("Small");
    stack_->setCheckable(true);
    stack_->setFocusPolicy(Qt::TabFocus);
    stack_->setAccessibleName(tr("Note stack of layer %1").arg(place_ + 1));
    stack_->setStatusTip(tr("A Note Off does not end a note that something else still holds"));
    connect(stack_, &QPushButton::clicked, this, [this](bool on) {
        models_.edits.alone([&] { change_(tr("note stack"), [on](Layer& l) { l.useNoteStack = on; }); });
    });
    minVelocity_ = number(tr("Lowest velocity"), tr("The softest note it takes"), 0, 127,
                          [](Layer& l, int v) { l.minVelocity = static_cast<std::int8_t>(v); });
    maxVelocity_ = number(tr("Highest velocity"), tr("The hardest note it takes"), 0, 127,
                          [](Layer& l, int v) { l.maxVelocity = static_cast<std::int8_t>(v); });
    place(0, tr("notes"), {low_, high_, captioned(tr("velocities")), minVelocity_, maxVelocity_, stack_});
    const QStringList kinds{tr("by"), tr("to")};
    transposeKind_ = choice(tr("Kind of transposition"), tr("By so many steps, or to one note"), kinds,
                            [](Layer& l, int i) { l.transpose = valueOf(i == 0, l.transpose.getValue()); });
    transpose_ = number(
        tr("Transposition"), tr("Semitones; with a key, steps of its scale"), -127, 127,
        [](Layer& l, int v) { l.transpose = valueOf(l.transpose.isRelative(), v); }, signedText);
    QStringList keys{tr("no key")};
    for (int i = 0; i < 12; ++i) {
        keys << QString::fromStdString(Note(i).getPitchName());
    }
    key_ = choice(tr("Key"), tr("In a key, a transposition counts steps of its major scale"), keys,
                  [](Layer& l, int i) { l.key = i == 0 ? Note() : Note(i - 1); });
    place(1, tr("transpose"), {transposeKind_, transpose_, key_});
    velocityKind_ = choice(tr("Kind of velocity"), tr("By so much, or to one velocity"), kinds,
                           [](Layer& l, int i) { l.velocity = valueOf(i == 0, l.velocity.getValue()); });
    velocity_ = number(
        tr("Velocity"), tr("Added to the velocity of each note, or what it becomes"), -127, 127,
        [](Layer& l, int v) { l.velocity = valueOf(l.velocity.isRelative(), v); }, signedText);
    numerator_ = number(tr("Compression, above"), tr("Velocities are multiplied by this ..."), 0, 16,
                        [](Layer& l, int v) { l.compress = Fraction(v, l.compress.getDenominator()); });
    denominator_ = number(tr("Compression, below"), tr("... and divided by this"), 1, 16,
                          [](Layer& l, int v) { l.compress = Fraction(l.compress.getNumerator(), v); });
    place(2, tr("velocity"),
          {velocityKind_, velocity_, captioned(tr("times")), numerator_, captioned("/"), denominator_});
    output_ = choice(tr("Output"), tr("Where the layer plays"), {},
                     [](Layer& l, int i) { l.output = static_cast<std::int8_t>(i - 1); });
    channel_ = number(tr("Channel"), tr("The channel it plays on"), 1, 16,
                      [](Layer& l, int v) { l.channel = static_cast<std::int8_t>(v - 1); });
    place(3, tr("output"), {output_, captioned(tr("channel")), channel_});
    QStringList zones{tr("any zone")};
    for (int i = 1; i <= 16; ++i) {
        zones << tr("zone %1").arg(i);
    }
    zone_ = choice(tr("Zone"), tr("Takes the notes of this zone only"), zones,
                   [](Layer& l, int i) { l.zone = static_cast<std::int8_t>(i - 1); });
    toggle_ = choice(tr("Note toggle"), tr("The second press of a key ends its note, or strikes it again"),
                     {tr("no toggle"), tr("type 1: ends"), tr("type 2: again")},
                     [](Layer& l, int i) { l.toggle = NoteToggle(static_cast<NoteToggle::State>(i)); });
    place(4, tr("zone"), {zone_, captioned(tr("toggle")), toggle_});
    pattern_ = new LayerPattern(
        models_, place_,
        [this](const QString& text, const std::function<void(Layer&)>& work) {
            models_.edits.alone([&] { change_(text, work); });
        },
        this);
    table->addWidget(pattern_, 5, 0, 1, 2);
    table->setColumnStretch(1, 1);
}

void LayerDetails::refresh(const Layer& layer) {
    low_->setValue(layer.minNote.getNumber());
    high_->setValue(layer.maxNote.getNumber());
    minVelocity_->setValue(layer.minVelocity);
    maxVelocity_->setValue(layer.maxVelocity);
    transposeKind_->setCurrentIndex(layer.transpose.isRelative() ? 0 : 1);
    transpose_->setValue(layer.transpose.getValue());
    key_->setCurrentIndex(layer.key.isSet() ? layer.key.getNumber() % 12 + 1 : 0);
    velocityKind_->setCurrentIndex(layer.velocity.isRelative() ? 0 : 1);
    velocity_->setValue(layer.velocity.getValue());
    numerator_->showValue(0, 16, layer.compress.getNumerator());
    denominator_->showValue(1, 16, layer.compress.getDenominator());
    output_->clear();
    output_->addItem(tr("default output"));
    for (std::size_t i = 0; i < models_.ports.outputs().size(); ++i) {
        output_->addItem(models_.ports.outputName(static_cast<int>(i)));
    }
    while (output_->count() <= layer.output + 1) {
        output_->addItem(models_.ports.outputName(output_->count() - 1));
    }
    output_->setCurrentIndex(layer.output + 1);
    channel_->setValue(layer.channel + 1);
    while (zone_->count() <= layer.zone + 1) {
        zone_->addItem(tr("zone %1").arg(zone_->count()));
    }
    zone_->setCurrentIndex(layer.zone + 1);
    toggle_->setCurrentIndex(static_cast<int>(layer.toggle.getState()));
    stack_->setChecked(layer.useNoteStack);
    pattern_->refresh(layer);
}

} // namespace Desktop
