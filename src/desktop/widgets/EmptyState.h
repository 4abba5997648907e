// What a panel shows while there is nothing in it: what it is for, and how to begin.
#pragma once

#include <QHBoxLayout>
#include <QPushButton>
#include <QWidget>

namespace Desktop {

class EmptyState final : public QWidget {
    Q_OBJECT

public:
    EmptyState(const QString& text, QWidget* parent);

    // A way to begin; belongs to the widget.
    QPushButton* addButton(const QString& caption, const QString& name, const QString& help);

private:
    QHBoxLayout* buttons_;
};

} // namespace Desktop
