#include "desktop/panels/SequenceEditor.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/TickLengths.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"
#include "desktop/widgets/StepGrid.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace Desktop {

using namespace Backend::SequenceManagement;

SequenceEditor::SequenceEditor(Models& models, int layer, QWidget* parent) : QWidget(parent), models_(models) {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(grid(1));
    grid_ = new StepGrid(this);
    grid_->describe(tr("Steps of layer %1").arg(layer + 1),
                    tr("Click sets a note, again removes it; drag moves it; the wheel changes its velocity. "
                       "Several notes in a column are a chord"));
    all->addWidget(grid_);
    auto* const row = new QHBoxLayout;
    row->setSpacing(grid(1));
    const auto place = [&](const QString& caption, QWidget* widget) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        row->addWidget(label);
        row->addWidget(widget);
    };
    count_ = new NumberField(this);
    count_->setRange(1, 256);
    count_->describe(tr("Number of steps of layer %1").arg(layer + 1), tr("How many steps the sequence has"));
    place(tr("steps"), count_);
    velocity_ = new NumberField(this);
    velocity_->setRange(-127, 127);
    velocity_->setResting(0);
    velocity_->describe(tr("Step velocity of layer %1").arg(layer + 1),
                        tr("Added to the velocity of what is played, for the chosen note"));
    place(tr("velocity"), velocity_);
    length_ = new MenuBox(this);
    addTickLengths(*length_);
    length_->setFocusPolicy(Qt::TabFocus);
    length_->setAccessibleName(tr("Step length of layer %1").arg(layer + 1));
    length_->setStatusTip(tr("How long the chosen note sounds at most"));
    place(tr("length"), length_);
    rest_ = new QPushButton(tr("rest"), this);
    rest_->setObjectName("Small");
    rest_->setCheckable(true);
    rest_->setFocusPolicy(Qt::TabFocus);
    rest_->setAccessibleName(tr("Rest in the sequence of layer %1").arg(layer + 1));
    rest_->setStatusTip(tr("The chosen step plays nothing"));
    row->addWidget(rest_);
    row->addStretch(1);
    all->addLayout(row);
    connect(grid_, &StepGrid::edited, this, [this] {
        store();
        models_.edits.endOfGesture();
    });
    connect(grid_, &StepGrid::moved, this, &SequenceEditor::showPlace);
    // Each edit writes a file: only what a drag comes to is stored.
    connect(count_, &NumberField::letGo, this, [this] {
        Sequence sequence = grid_->sequence();
        const auto count = static_cast<std::size_t>(count_->value());
        if (count != sequence.steps.size()) {
            sequence.steps.resize(count, {StepEntry{}});
            grid_->setSequence(sequence);
            store();
        }
    });
    connect(velocity_, &NumberField::letGo, this, [this] { grid_->setVelocity(velocity_->value()); });
    connect(length_, &QComboBox::activated, this, [this] { grid_->setLength(tickLengthOf(*length_)); });
    connect(rest_, &QPushButton::clicked, this, [this](bool on) { grid_->setRest(on); });
    connect(&models.sequences, &Model::changed, this, &SequenceEditor::refresh);
}

void SequenceEditor::edit(const std::string& name) {
    name_ = name;
    refresh();
}

void SequenceEditor::store() {
    models_.sequences.change(name_, grid_->sequence());
}

void SequenceEditor::refresh() {
    grid_->setSequence(models_.sequences.sequence(name_));
    showPlace();
}

void SequenceEditor::showPlace() {
    count_->setValue(static_cast<int>(grid_->sequence().steps.size()));
    const StepEntry* const note = grid_->chosen();
    velocity_->setEnabled(note != nullptr);
    length_->setEnabled(note != nullptr);
    if (note != nullptr) {
        velocity_->setValue(note->velocityOffset);
        showTickLength(*length_, note->length);
    }
    const Step& step = grid_->sequence().steps[static_cast<std::size_t>(grid_->step())];
    rest_->setChecked(step.empty() || step.front().rest);
}

} // namespace Desktop
