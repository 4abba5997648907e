#include "desktop/panels/LayerStrip.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/LayerPattern.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"
#include "desktop/widgets/RangeBar.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace Desktop {

using Backend::Layers::Layer;

namespace {

QString noteText(int note) {
    return QString::fromStdString(Note(note).getName());
}

QString signedText(int value) {
    return value > 0 ? "+" + QString::number(value) : QString::number(value);
}

RelativeFixedValue valueOf(bool relative, int number) {
    return relative ? RelativeFixedValue::relative(number) : RelativeFixedValue::fixed(number);
}

} // namespace

LayerStrip::LayerStrip(Models& models, int layer, QWidget* parent) : Strip(parent), models_(models), place_(layer) {
    const QString name = tr("Layer %1").arg(layer + 1);
    setAccessibleName(name);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(grid(4), grid(1), grid(2), grid(1));
    all->setSpacing(grid(1));
    auto* const top = new QHBoxLayout;
    top->setSpacing(grid(2));
    name_ = new QToolButton(this);
    name_->setObjectName("Flat");
    name_->setText(QStringLiteral("L:%1").arg(layer + 1));
    name_->setCheckable(true);
    name_->setFocusPolicy(Qt::TabFocus);
    name_->setAccessibleName(tr("Details of layer %1").arg(layer + 1));
    name_->setStatusTip(tr("Selects the layer and opens its settings"));
    top->addWidget(name_);
    summary_ = new ElidedLabel(this);
    summary_->setObjectName("Dim");
    top->addWidget(summary_, 1);
    const auto button = [&](const QString& text, const QString& what, const QString& help) {
        auto* const made = new QPushButton(text, this);
        made->setObjectName("Small");
        made->setCheckable(true);
        made->setFocusPolicy(Qt::TabFocus);
        made->setAccessibleName(tr("%1 of layer %2").arg(what).arg(place_ + 1));
        made->setStatusTip(help);
        return made;
    };
    mute_ = button("M", tr("Mute"), tr("The layer plays nothing"));
    solo_ = button("S", tr("Solo"), tr("As long as there is a soloist, only soloists play"));
    mono_ = button(tr("mono"), tr("Mono"), tr("One note at a time"));
    const auto onOff = [this](QPushButton* made, const QString& text, bool Layer::*which) {
        connect(made, &QPushButton::clicked, this, [this, text, which](bool on) {
            models_.edits.alone([&] { change(text, [&](Layer& l) { l.*which = on; }); });
        });
    };
    onOff(mute_, tr("mute"), &Layer::mute);
    onOff(solo_, tr("solo"), &Layer::solo);
    onOff(mono_, tr("mono"), &Layer::mono);
    for (QPushButton* const each : {mute_, solo_, mono_}) {
        top->addWidget(each);
    }
    auto* const more = new QToolButton(this);
    more->setObjectName("Flat");
    more->setText("⋮");
    more->setAccessibleName(tr("Menu of layer %1").arg(layer + 1));
    more->setStatusTip(tr("Moves or removes the layer"));
    more->setFocusPolicy(Qt::TabFocus);
    more->setPopupMode(QToolButton::InstantPopup);
    auto* const menu = new QMenu(more);
    menu->addAction(tr("Move up"), this, [this] { models_.layers.moveTo(place_, place_ - 1); });
    menu->addAction(tr("Move down"), this, [this] { models_.layers.moveTo(place_, place_ + 1); });
    menu->addAction(tr("Remove"), this, [this] { models_.layers.remove(place_); });
    more->setMenu(menu);
    top->addWidget(more);
    all->addLayout(top);
    range_ = new RangeBar(this);
    range_->describe(tr("Notes of layer %1").arg(layer + 1),
                     tr("The notes that the layer takes: drag the ends, or the whole bar"));
    connect(range_, &RangeBar::moved, this, [this](int low, int high) {
        change(tr("the notes of a layer"), [=](Layer& l) {
            l.minNote = Note(low);
            l.maxNote = Note(high);
        });
    });
    connect(range_, &RangeBar::letGo, this, [this] { models_.edits.endOfGesture(); });
    all->addWidget(range_);
    details_ = new QWidget(this);
    details_->hide();
    all->addWidget(details_);
    buildDetails(details_);
    connect(name_, &QToolButton::clicked, this, [this](bool on) {
        details_->setVisible(on);
        models_.layers.select(place_);
    });
    refresh();
}

void LayerStrip::buildDetails(QWidget* details) {
    auto* const table = new QGridLayout(details);
    table->setContentsMargins(0, 0, 0, 0);
    table->setVerticalSpacing(grid(1));
    table->setHorizontalSpacing(grid(2));
    const auto number = [&](const QString& name, const QString& help, int min, int max,
                            std::function<void(Layer&, int)> set, std::function<QString(int)> text = {}) {
        auto* const field = new NumberField(details);
        field->setRange(min, max);
        if (text) {
            field->setText(std::move(text));
        }
        field->describe(tr("%1 of layer %2").arg(name).arg(place_ + 1), help);
        connect(field, &NumberField::moved, this,
                [this, name, set = std::move(set)](int value) { change(name, [&](Layer& l) { set(l, value); }); });
        connect(field, &NumberField::letGo, this, [this] { models_.edits.endOfGesture(); });
        return field;
    };
    const auto choice = [&](const QString& name, const QString& help, const QStringList& items,
                            std::function<void(Layer&, int)> set) {
        auto* const box = new MenuBox(details);
        box->addItems(items);
        box->setFocusPolicy(Qt::TabFocus);
        box->setAccessibleName(tr("%1 of layer %2").arg(name).arg(place_ + 1));
        box->setStatusTip(help);
        connect(box, &QComboBox::activated, this, [this, name, set = std::move(set)](int index) {
            models_.edits.alone([&] { change(name, [&](Layer& l) { set(l, index); }); });
        });
        return box;
    };
    const auto captioned = [&](const QString& text) {
        auto* const label = new QLabel(text, details);
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
    stack_ = new QPushButton(tr("stack"), details);
    stack_->setObjectName("Small");
    stack_->setCheckable(true);
    stack_->setFocusPolicy(Qt::TabFocus);
    stack_->setAccessibleName(tr("Note stack of layer %1").arg(place_ + 1));
    stack_->setStatusTip(tr("A Note Off does not end a note that something else still holds"));
    connect(stack_, &QPushButton::clicked, this, [this](bool on) {
        models_.edits.alone([&] { change(tr("note stack"), [on](Layer& l) { l.useNoteStack = on; }); });
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
            models_.edits.alone([&] { change(text, work); });
        },
        details);
    table->addWidget(pattern_, 5, 0, 1, 2);
    table->setColumnStretch(1, 1);
}

Layer LayerStrip::layer() const {
    const auto place = static_cast<std::size_t>(place_);
    return place < models_.layers.layers().size() ? models_.layers.layers()[place] : Layer{};
}

void LayerStrip::change(const QString& text, const std::function<void(Layer&)>& work) {
    if (showing_) {
        return;
    }
    Layer after = layer();
    work(after);
    models_.layers.change(tr("%1 of layer %2").arg(text).arg(place_ + 1), place_, after);
}

void LayerStrip::refresh() {
    const Layer now = layer();
    showing_ = true;
    summary_->setText(models_.layers.summary(place_));
    summary_->setToolTip(summary_->text());
    range_->setRange(now.minNote.getNumber(), now.maxNote.getNumber());
    range_->setColour(Desktop::palette().inTurn(place_));
    range_->setEnabled(!now.mute);
    mute_->setChecked(now.mute);
    solo_->setChecked(now.solo);
    mono_->setChecked(now.mono);
    low_->setValue(now.minNote.getNumber());
    high_->setValue(now.maxNote.getNumber());
    minVelocity_->setValue(now.minVelocity);
    maxVelocity_->setValue(now.maxVelocity);
    transposeKind_->setCurrentIndex(now.transpose.isRelative() ? 0 : 1);
    transpose_->setValue(now.transpose.getValue());
    key_->setCurrentIndex(now.key.isSet() ? now.key.getNumber() % 12 + 1 : 0);
    velocityKind_->setCurrentIndex(now.velocity.isRelative() ? 0 : 1);
    velocity_->setValue(now.velocity.getValue());
    numerator_->showValue(0, 16, now.compress.getNumerator());
    denominator_->showValue(1, 16, now.compress.getDenominator());
    output_->clear();
    output_->addItem(tr("default output"));
    for (std::size_t i = 0; i < models_.ports.outputs().size(); ++i) {
        output_->addItem(models_.ports.outputName(static_cast<int>(i)));
    }
    while (output_->count() <= now.output + 1) {
        output_->addItem(models_.ports.outputName(output_->count() - 1));
    }
    output_->setCurrentIndex(now.output + 1);
    channel_->setValue(now.channel + 1);
    while (zone_->count() <= now.zone + 1) {
        zone_->addItem(tr("zone %1").arg(zone_->count()));
    }
    zone_->setCurrentIndex(now.zone + 1);
    toggle_->setCurrentIndex(static_cast<int>(now.toggle.getState()));
    stack_->setChecked(now.useNoteStack);
    pattern_->refresh(now);
    showing_ = false;
    update();
}

void LayerStrip::showLamp() {
    const Layer now = layer();
    const bool lit = !now.mute && models_.playing.isChannelBusy(now.channel, now.output);
    if (lit != lit_) {
        lit_ = lit;
        update();
    }
}

void LayerStrip::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        models_.layers.select(place_);
    }
}

void LayerStrip::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool edited = models_.layers.selectedForEdit() == place_;
    const bool selected = models_.layers.selected() == place_;
    painter.setPen(QPen(edited ? p.amber : selected ? p.dim : p.line, 1));
    painter.setBrush(p.raised);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(p.inTurn(place_));
    painter.drawRoundedRect(QRectF(0, 0, 4, height()), 2, 2);
    painter.setBrush(lit_ ? p.green : p.line);
    const double lamp = grid(2);
    const double middle = name_->geometry().center().y();
    painter.drawEllipse(QRectF(grid(1) + 3, middle - lamp / 2, lamp, lamp));
}

} // namespace Desktop
