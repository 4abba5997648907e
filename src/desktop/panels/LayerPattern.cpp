#include "desktop/panels/LayerPattern.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/SequenceEditor.h"
#include "desktop/panels/TickLengths.h"
#include "desktop/widgets/MenuBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <initializer_list>
#include <utility>

namespace Desktop {

using Backend::ArpeggioManagement::ArpeggioKind;
using Backend::ArpeggioManagement::ArpeggioSetting;
using Backend::Layers::Layer;
using Backend::SequenceManagement::Sequence;
using Backend::SequenceManagement::SequenceSetting;
using Backend::SequenceManagement::StepEntry;

LayerPattern::LayerPattern(Models& models, int layer, Change change, QWidget* parent)
    : QWidget(parent), models_(models), place_(layer), change_(std::move(change)) {
    all_ = new QVBoxLayout(this);
    all_->setContentsMargins(0, 0, 0, 0);
    all_->setSpacing(grid(1));
    const auto describe = [this](QWidget* widget, const QString& name, const QString& help) {
        widget->setFocusPolicy(Qt::TabFocus);
        widget->setAccessibleName(tr("%1 of layer %2").arg(name).arg(place_ + 1));
        widget->setStatusTip(help);
    };
    const auto row = [this](const QString& caption, std::initializer_list<QWidget*> widgets) {
        auto* const line = new QHBoxLayout;
        line->setSpacing(grid(2));
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        label->setMinimumWidth(fontMetrics().horizontalAdvance(tr("transpose"))); // the longest one above
        line->addWidget(label);
        for (QWidget* const widget : widgets) {
            line->addWidget(widget);
        }
        line->addStretch(1);
        all_->addLayout(line);
    };
    arpeggio_ = new MenuBox(this);
    arpeggio_->addItems({tr("no arpeggio"), tr("chord"), tr("up"), tr("down"), tr("up and down")});
    describe(arpeggio_, tr("Arpeggio"), tr("Plays the held notes beat by beat, in this order"));
    connect(arpeggio_, &QComboBox::activated, this, [this](int index) {
        change_(tr("arpeggio"), [index](Layer& l) {
            if (index == 0) {
                l.arpeggio.reset();
                return;
            }
            ArpeggioSetting setting = l.arpeggio.value_or(ArpeggioSetting{});
            setting.kind = static_cast<ArpeggioKind>(index - 1);
            l.arpeggio = setting;
        });
    });
    const auto ticks = [&](const QString& name, const QString& help, std::int32_t ArpeggioSetting::*which) {
        auto* const box = new MenuBox(this);
        addTickLengths(*box);
        describe(box, name, help);
        connect(box, &QComboBox::activated, this, [this, box, name, which] {
            change_(name, [&](Layer& l) {
                if (l.arpeggio) {
                    (*l.arpeggio).*which = tickLengthOf(*box);
                }
            });
        });
        return box;
    };
    beat_ = ticks(tr("Arpeggio beat"), tr("The time from note to note"), &ArpeggioSetting::beat);
    length_ = ticks(tr("Arpeggio length"), tr("How long each note sounds"), &ArpeggioSetting::length);
    row(tr("arpeggio"), {arpeggio_, beat_, length_});
    sequence_ = new MenuBox(this);
    sequence_->setMaxVisibleItems(24);
    describe(sequence_, tr("Sequence"), tr("Plays a step of this sequence for each note"));
    connect(sequence_, &QComboBox::activated, this,
            [this](int index) { chooseSequence(index == 0 ? "" : sequence_->itemText(index).toStdString()); });
    const auto use = [&](const QString& text, const QString& name, const QString& help, bool SequenceSetting::*which) {
        auto* const made = new QPushButton(text, this);
        made->setObjectName("Small");
        made->setCheckable(true);
        describe(made, name, help);
        connect(made, &QPushButton::clicked, this, [this, name, which](bool on) {
            change_(name, [=](Layer& l) {
                if (l.sequence) {
                    (*l.sequence).*which = on;
                }
            });
        });
        return made;
    };
    useNote_ =
        use(tr("notes"), tr("Notes of the sequence"), tr("The steps' notes are added"), &SequenceSetting::useNote);
    useVelocity_ = use(tr("accents"), tr("Velocities of the sequence"), tr("The steps' velocities are added"),
                       &SequenceSetting::useVelocity);
    useLength_ = use(tr("lengths"), tr("Lengths of the sequence"), tr("Notes end after their step's length"),
                     &SequenceSetting::useLength);
    auto* const add = new QPushButton("+", this);
    add->setObjectName("Small");
    describe(add, tr("New sequence"), tr("Makes a sequence of its own for this layer, from the one that it has"));
    connect(add, &QPushButton::clicked, this, &LayerPattern::addSequence);
    delete_ = new QPushButton("−", this);
    delete_->setObjectName("Small");
    describe(delete_, tr("Deletion of the sequence"),
             tr("Deletes the sequence for all programs; whatever else plays it lets its notes pass. It can be undone"));
    connect(delete_, &QPushButton::clicked, this, &LayerPattern::deleteSequence, Qt::QueuedConnection);
    edit_ = new QPushButton(tr("edit"), this);
    edit_->setObjectName("Small");
    edit_->setCheckable(true);
    describe(edit_, tr("Sequence editor"), tr("Shows the steps; what plays goes on with what they become"));
    connect(edit_, &QPushButton::clicked, this, &LayerPattern::showEditor);
    row(tr("sequence"), {sequence_, add, delete_, edit_});
    row(tr("with its"), {useNote_, useVelocity_, useLength_});
}

void LayerPattern::chooseSequence(const std::string& name) {
    change_(tr("sequence"), [&](Layer& l) {
        if (name.empty()) {
            l.sequence.reset();
            return;
        }
        SequenceSetting setting = l.sequence.value_or(SequenceSetting{});
        setting.preset = name;
        setting.sequence.reset(); // the backend looks it up
        l.sequence = setting;
    });
}

void LayerPattern::addSequence() {
    Sequence steps;
    if (now_.sequence) {
        steps = models_.sequences.sequence(now_.sequence->preset);
        if (steps.steps.empty() && now_.sequence->hasSteps()) {
            steps = *now_.sequence->sequence; // one without a file
        }
    }
    if (steps.steps.empty()) {
        steps.steps.assign(8, {StepEntry{}});
    }
    const std::string name = models_.sequences.freeName();
    models_.sequences.add(name, steps);
    chooseSequence(name);
    edit_->setChecked(true);
    showEditor();
}

void LayerPattern::deleteSequence() {
    if (!now_.sequence || !models_.sequences.contains(now_.sequence->preset)) {
        return;
    }
    const std::string name = now_.sequence->preset;
    models_.edits.beginMacro(tr("delete the sequence %1").arg(QString::fromStdString(name)));
    chooseSequence("");
    models_.sequences.remove(name);
    models_.edits.endMacro();
}

void LayerPattern::showEditor() {
    // One without a file is edited as a copy: "+".
    const bool on = edit_->isChecked() && now_.sequence && models_.sequences.contains(now_.sequence->preset);
    if (on && editor_ == nullptr) {
        editor_ = new SequenceEditor(models_, place_, this);
        all_->addWidget(editor_);
    }
    if (editor_ != nullptr) {
        editor_->setVisible(on);
    }
    if (on) {
        editor_->edit(now_.sequence->preset);
    }
}

void LayerPattern::refresh(const Layer& layer) {
    now_ = layer;
    arpeggio_->setCurrentIndex(layer.arpeggio ? static_cast<int>(layer.arpeggio->kind) + 1 : 0);
    const ArpeggioSetting arpeggio = layer.arpeggio.value_or(ArpeggioSetting{});
    showTickLength(*beat_, arpeggio.beat);
    showTickLength(*length_, arpeggio.length);
    beat_->setEnabled(layer.arpeggio.has_value());
    length_->setEnabled(layer.arpeggio.has_value());
    QStringList names{tr("no sequence")};
    names << models_.sequences.names();
    const SequenceSetting setting = layer.sequence.value_or(SequenceSetting{});
    const QString chosen = QString::fromStdString(setting.preset);
    if (layer.sequence && !names.contains(chosen)) {
        names << chosen;
    }
    if (names != names_) {
        names_ = names;
        sequence_->clear();
        sequence_->addItems(names);
    }
    sequence_->setCurrentIndex(layer.sequence ? static_cast<int>(names.indexOf(chosen)) : 0);
    useNote_->setChecked(setting.useNote);
    useVelocity_->setChecked(setting.useVelocity);
    useLength_->setChecked(setting.useLength);
    for (QPushButton* const each : {useNote_, useVelocity_, useLength_}) {
        each->setEnabled(layer.sequence.has_value());
    }
    edit_->setEnabled(layer.sequence && models_.sequences.contains(setting.preset));
    delete_->setEnabled(edit_->isEnabled());
    showEditor();
}

} // namespace Desktop
