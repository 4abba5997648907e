// Scrolls a column of things up and down, and asks for the width that they need.
#pragma once

#include <QScrollArea>

namespace Desktop {

// Where even so there is no room for the width of the content, it scrolls sideways, too. It takes no focus itself.
class ColumnArea final : public QScrollArea {
public:
    explicit ColumnArea(QWidget* parent);
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace Desktop
