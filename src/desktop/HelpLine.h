// The line at the bottom: what is under the pointer, and how the program is.
#pragma once

#include "desktop/DesktopApplication.h"

#include <QLabel>
#include <QWidget>

namespace Desktop {

class HelpLine final : public QWidget {
public:
    explicit HelpLine(QWidget* parent);

    void showText(const QString& text);
    void showFault(const QString& text);
    void showStatus(const Gui::HostStatus& status);

private:
    QLabel* text_;
    QLabel* status_;
};

} // namespace Desktop
