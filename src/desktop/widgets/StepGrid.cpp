#include "desktop/widgets/StepGrid.h"

#include "desktop/Palette.h"
#include "desktop/models/NumberTexts.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace Desktop {

using Backend::SequenceManagement::Sequence;
using Backend::SequenceManagement::Step;
using Backend::SequenceManagement::StepEntry;

namespace {

// All that does not sound goes when a step gets a note, and a step without notes is a rest.
void tidy(Step& step) {
    if (std::any_of(step.begin(), step.end(), [](const StepEntry& each) { return !each.rest; })) {
        std::erase_if(step, [](const StepEntry& each) { return each.rest; });
    } else {
        StepEntry rest;
        rest.rest = true;
        step = {rest};
    }
}

} // namespace

StepGrid::StepGrid(QWidget* parent) : Instrument(parent) {
    sequence_.steps.push_back({StepEntry{}});
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &StepGrid::letGo, this, &StepGrid::endGesture);
}

void StepGrid::setSequence(const Sequence& sequence) {
    if (dragging_ || changed_ || (sequence == sequence_ && !sequence.steps.empty())) {
        return;
    }
    sequence_ = sequence;
    if (sequence_.steps.empty()) {
        sequence_.steps.push_back({StepEntry{}});
    }
    choose(step_, offset_);
}

Step& StepGrid::here() {
    return sequence_.steps[static_cast<std::size_t>(step_)];
}

StepEntry* StepGrid::noteAt(int step, int offset) {
    Step& notes = sequence_.steps[static_cast<std::size_t>(step)];
    const auto found = std::find_if(notes.begin(), notes.end(), [offset](const StepEntry& each) {
        return !each.rest && each.noteOffset == offset;
    });
    return found == notes.end() ? nullptr : &*found;
}

const StepEntry* StepGrid::chosen() const {
    return const_cast<StepGrid*>(this)->noteAt(step_, offset_);
}

void StepGrid::choose(int step, int offset) {
    step_ = std::clamp(step, 0, static_cast<int>(sequence_.steps.size()) - 1);
    offset_ = std::clamp(offset, -furthest, furthest);
    fitRows();
    update();
    announce();
    emit moved();
}

// Two octaves, and whatever else the notes and the place need.
void StepGrid::fitRows() {
    low_ = std::min(-12, offset_);
    high_ = std::max(12, offset_);
    for (const Step& step : sequence_.steps) {
        for (const StepEntry& note : step) {
            low_ = std::max(std::min(low_, note.noteOffset), -furthest);
            high_ = std::min(std::max(high_, note.noteOffset), furthest);
        }
    }
    updateGeometry();
}

void StepGrid::report() {
    fitRows();
    update();
    announce();
    emit edited();
    emit moved();
}

void StepGrid::endGesture() {
    dragging_ = false;
    if (std::exchange(changed_, false)) {
        report();
    }
}

void StepGrid::addNote() {
    if (here().size() < 32 || here().front().rest) { // as many as a step can hold
        StepEntry note = here().empty() ? StepEntry{} : here().front();
        note.rest = false;
        note.noteOffset = offset_;
        here().push_back(note);
        tidy(here());
    }
}

void StepGrid::removeNote() {
    std::erase_if(here(), [this](const StepEntry& each) { return !each.rest && each.noteOffset == offset_; });
    tidy(here());
}

void StepGrid::setVelocity(int offset) {
    if (StepEntry* const note = noteAt(step_, offset_); note != nullptr && note->velocityOffset != offset) {
        note->velocityOffset = std::clamp(offset, -127, 127);
        report();
    }
}

void StepGrid::setLength(int ticks) {
    if (StepEntry* const note = noteAt(step_, offset_); note != nullptr && note->length != ticks) {
        note->length = std::max(ticks, 1);
        report();
    }
}

void StepGrid::setRest(bool on) {
    if (on) {
        here().clear();
        tidy(here());
    } else {
        addNote();
    }
    report();
}

QRectF StepGrid::rectOf(int step, int offset) const {
    const double wide = static_cast<double>(width()) / columns;
    const double high = static_cast<double>(height()) / (high_ - low_ + 1);
    return {(step % columns) * wide, (high_ - offset) * high, wide, high};
}

int StepGrid::offsetAt(double y) const {
    const double part = y / std::max(1, height());
    return std::clamp(high_ - static_cast<int>(std::floor(part * (high_ - low_ + 1))), low_, high_);
}

QString StepGrid::valueText() const {
    const QString place = tr("step %1 of %2").arg(step_ + 1).arg(sequence_.steps.size());
    const Step& step = sequence_.steps[static_cast<std::size_t>(step_)];
    if (step.empty() || step.front().rest) {
        return place + ", " + tr("rest");
    }
    const QString at = place + ", " + tr("%1 semitones").arg(signedText(offset_));
    const StepEntry* const note = chosen();
    return note == nullptr
               ? at + ", " + tr("no note")
               : at + ", " + tr("velocity %1, %2 ticks").arg(signedText(note->velocityOffset)).arg(note->length);
}

QSize StepGrid::sizeHint() const {
    return {grid(80), std::clamp((high_ - low_ + 1) * grid(2), grid(50), grid(75))};
}

void StepGrid::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.fillRect(rect(), p.sunk);
    const int first = step_ / columns * columns;
    const int end = std::min(first + columns, static_cast<int>(sequence_.steps.size()));
    for (int step = first; step < end; ++step) {
        const QRectF top = rectOf(step, high_);
        painter.fillRect(QRectF(top.left(), 0, top.width() - 1, height()), step == step_ ? p.raised : p.panel);
    }
    painter.setPen(QPen(p.line, 1));
    for (int offset = low_; offset <= high_; ++offset) {
        if (offset % 12 == 0) { // the note itself and its octaves
            const QRectF row = rectOf(first, offset);
            painter.fillRect(QRectF(0, row.top(), width(), row.height()), p.line);
        }
    }
    painter.setFont(figureFont(0.75));
    for (int step = first; step < end; ++step) {
        const Step& notes = sequence_.steps[static_cast<std::size_t>(step)];
        if (notes.empty() || notes.front().rest) {
            const QRectF top = rectOf(step, high_);
            painter.setPen(p.dim);
            painter.drawText(QRectF(top.left(), 0, top.width(), height()), Qt::AlignCenter, QStringLiteral("–"));
            continue;
        }
        for (const StepEntry& note : notes) {
            QRectF cell = rectOf(step, std::clamp(note.noteOffset, low_, high_)).adjusted(1, 0.5, -2, -0.5);
            cell.setWidth(cell.width() * std::clamp(std::sqrt(note.length / 1920.0), 0.15, 1.0));
            QColor colour = p.amber;
            colour.setAlphaF(static_cast<float>(std::clamp(0.7 + note.velocityOffset / 120.0, 0.3, 1.0)));
            painter.fillRect(cell, colour);
        }
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(p.text, 1));
    painter.drawRect(rectOf(step_, offset_).adjusted(0.5, 0.5, -1.5, -0.5));
    painter.setPen(p.dim);
    painter.drawText(rect().adjusted(4, 2, -4, -2), Qt::AlignRight | Qt::AlignTop,
                     QStringLiteral("%1–%2 / %3").arg(first + 1).arg(end).arg(sequence_.steps.size()));
    paintRing(painter);
}

void StepGrid::mousePressEvent(QMouseEvent* event) {
    const int first = step_ / columns * columns;
    const int step = first + static_cast<int>(event->position().x() * columns / std::max(1, width()));
    endSteps();
    if (event->button() != Qt::LeftButton || step < 0 || step >= static_cast<int>(sequence_.steps.size())) {
        return;
    }
    const int offset = offsetAt(event->position().y());
    const bool again = step == step_ && offset == offset_;
    step_ = step;
    offset_ = offset;
    if (noteAt(step, offset) == nullptr) {
        addNote();
        changed_ = true;
    } else if (again) {
        removeNote();
        changed_ = true;
    }
    dragging_ = true;
    update();
    emit moved();
}

void StepGrid::mouseMoveEvent(QMouseEvent* event) {
    StepEntry* const note = dragging_ ? noteAt(step_, offset_) : nullptr;
    const int offset = offsetAt(event->position().y());
    if (note != nullptr && offset != offset_ && noteAt(step_, offset) == nullptr) {
        note->noteOffset = offset;
        offset_ = offset;
        changed_ = true;
        update();
    }
}

void StepGrid::mouseReleaseEvent(QMouseEvent*) {
    if (dragging_) {
        endGesture();
    }
}

void StepGrid::wheelEvent(QWheelEvent* event) {
    StepEntry* const note = noteAt(step_, offset_);
    if (note != nullptr && event->angleDelta().y() != 0) {
        note->velocityOffset = std::clamp(note->velocityOffset + (event->angleDelta().y() > 0 ? 5 : -5), -127, 127);
        changed_ = true;
        update();
        announce();
        emit moved();
        stepped();
    }
    event->accept();
}

void StepGrid::keyPressEvent(QKeyEvent* event) {
    endSteps();
    switch (event->key()) {
    case Qt::Key_Left:
        return choose(step_ - 1, offset_);
    case Qt::Key_Right:
        return choose(step_ + 1, offset_);
    case Qt::Key_Up:
        return choose(step_, offset_ + 1);
    case Qt::Key_Down:
        return choose(step_, offset_ - 1);
    case Qt::Key_PageUp:
        return choose(step_, offset_ + 12);
    case Qt::Key_PageDown:
        return choose(step_, offset_ - 12);
    case Qt::Key_Home:
        return choose(0, offset_);
    case Qt::Key_End:
        return choose(static_cast<int>(sequence_.steps.size()) - 1, offset_);
    case Qt::Key_Space:
        noteAt(step_, offset_) == nullptr ? addNote() : removeNote();
        return report();
    case Qt::Key_Delete:
        return setRest(true);
    default:
        Instrument::keyPressEvent(event);
    }
}

} // namespace Desktop
