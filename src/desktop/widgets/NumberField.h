// A number in a box: drag it up and down, turn the wheel, type.
#pragma once

#include "desktop/widgets/ValueInstrument.h"

#include <functional>

namespace Desktop {

class NumberField final : public ValueInstrument {
    Q_OBJECT

public:
    using ValueInstrument::ValueInstrument;
    // How a value is written; decimal without.
    void setText(std::function<QString(int)> text);
    void setScale(double scale); // of the figures
    void setFrame(bool on);      // without, the figures stand alone
    // From outside: a value beyond what can be set is shown as it is, and can be gone back to.
    void showValue(int min, int max, int value);
    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::function<QString(int)> text_;
    double scale_ = 1.0;
    bool hasFrame_ = true;
};

} // namespace Desktop
