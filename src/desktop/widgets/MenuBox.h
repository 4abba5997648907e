// A menu in a form.
#pragma once

#include <QComboBox>
#include <QString>

namespace Desktop {

// Worked by Tab and arrows or by the mouse. In a narrow form it shrinks, and its words are cut there.
[[nodiscard]] QComboBox* makeMenu(const QString& name, const QString& help, QWidget* parent);

} // namespace Desktop
