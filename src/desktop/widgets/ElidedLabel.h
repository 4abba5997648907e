// One line of text that ends in dots where there is no room for it.
#pragma once

#include <QLabel>

namespace Desktop {

class ElidedLabel final : public QLabel {
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace Desktop
