// Two periods of a wave, with the point that moves along it.
#pragma once

#include "desktop/widgets/Instrument.h"

#include <functional>

namespace Desktop {

class WaveView final : public Instrument {
    Q_OBJECT

public:
    explicit WaveView(QWidget* parent);
    // The height, 0..1, at each part, 0..1, of the period.
    void setWave(std::function<double(double)> wave, int low, int high);
    // The value it has come to; nothing is shown while it does not run.
    void setRunning(bool on);
    void setValue(int value);
    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();
    [[nodiscard]] double portion() const; // how high the value is, 0..1

    std::function<double(double)> wave_;
    int low_ = 0;
    int high_ = 127;
    int value_ = 0;
    bool running_ = false;
    double phase_ = 0; // where the point is, 0..1
};

} // namespace Desktop
