// A knob: a ring of which a part is filled, and a pointer.
#pragma once

#include "desktop/widgets/ValueInstrument.h"

namespace Desktop {

class Knob final : public ValueInstrument {
    Q_OBJECT

public:
    using ValueInstrument::ValueInstrument;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace Desktop
