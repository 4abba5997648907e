// One oscillator: its wave, its speed, its range, and what it moves.
#pragma once

#include "generators/Oscillator.h"

#include <QComboBox>
#include <QPushButton>
#include <QWidget>
#include <functional>

namespace Desktop {

class Models;
class NumberField;
class WaveView;

class OscillatorStrip final : public QWidget {
    Q_OBJECT

public:
    OscillatorStrip(Models& models, int oscillator, QWidget* parent);
    void refresh();
    void setValue(int value);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] Backend::Oscillators::Oscillator now() const;
    void change(const QString& text, const std::function<void(Backend::Oscillators::Oscillator&)>& work);

    Models& models_;
    int place_;
    WaveView* wave_;
    QPushButton* play_;
    QComboBox *type_, *speedMode_, *length_, *event_;
    NumberField *speed_, *min_, *max_, *number_, *channel_, *output_, *stop_;
};

} // namespace Desktop
