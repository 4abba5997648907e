// The steps of a sequence: a column each, with its notes by height, their velocity by strength, their length by width.
#pragma once

#include "desktop/widgets/Instrument.h"
#include "generators/Sequence.h"

#include <QRectF>

namespace Desktop {

// A click on an empty cell adds a note to the step, on another note chooses it, on the chosen note removes it; a drag
// moves a note up and down. The wheel changes the velocity of the chosen note. The arrows move the place, Page Up and
// Page Down by an octave, Home and End to the ends, Space sets and removes a note, Delete makes the step a rest.
class StepGrid final : public Instrument {
    Q_OBJECT

public:
    static constexpr int columns = 16;  // shown at a time
    static constexpr int furthest = 60; // semitones up and down that can be set here

    explicit StepGrid(QWidget* parent);

    // From outside: nobody is told, and the place stays where it can.
    void setSequence(const Backend::SequenceManagement::Sequence& sequence);
    [[nodiscard]] const Backend::SequenceManagement::Sequence& sequence() const { return sequence_; }
    [[nodiscard]] int step() const { return step_; }
    // The note at the place, or null.
    [[nodiscard]] const Backend::SequenceManagement::StepEntry* chosen() const;
    void choose(int step, int offset);

    // By the user, of the chosen note; nothing without one.
    void setVelocity(int offset);
    void setLength(int ticks);
    // Makes the step a rest, or gives a rest the note at the place.
    void setRest(bool on);

    // Of a cell that is shown.
    [[nodiscard]] QRectF rectOf(int step, int offset) const;
    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;

signals:
    void edited(); // once a gesture
    void moved();  // another place is chosen, or the chosen note is being changed

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] Backend::SequenceManagement::Step& here();
    [[nodiscard]] Backend::SequenceManagement::StepEntry* noteAt(int step, int offset);
    [[nodiscard]] int offsetAt(double y) const;
    void addNote();
    void removeNote();
    void fitRows();
    void endGesture();
    void report();

    Backend::SequenceManagement::Sequence sequence_; // never without a step
    int step_ = 0;                                   // the place
    int offset_ = 0;
    int low_ = -12; // the rows
    int high_ = 12;
    bool dragging_ = false;
    bool changed_ = false; // in this gesture, which nobody has been told of yet
};

} // namespace Desktop
