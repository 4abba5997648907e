// A menu in a form.
#pragma once

#include <QComboBox>
#include <QString>

namespace Desktop {

// A word that does not fit ends in dots.
class MenuBox final : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Worked by Tab and arrows or by the mouse. In a narrow form it shrinks.
[[nodiscard]] MenuBox* makeMenu(const QString& name, const QString& help, QWidget* parent);

} // namespace Desktop
