// A panel of a list whose elements have a strip each, one below the other.
#pragma once

#include "desktop/panels/PanelFrame.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace Desktop {

class ColumnArea;
class EmptyState;

// One element of the list.
class Strip : public QWidget {
public:
    using QWidget::QWidget;
    // As the model has it now.
    virtual void refresh() = 0;
};

class StripsPanel : public PanelFrame {
    Q_OBJECT

protected:
    // The button that adds an element, and how.
    struct Adding {
        QString name;
        QString help;
        std::function<void()> work;
        QString whenEmpty = {}; // what is said while there is none; nothing: there always is one
    };
    // `narrowest`: of the list, in pixels.
    StripsPanel(Gui::Panel panel, const QString& title, const QString& help, int narrowest, Adding adding,
                Models& models, QWidget* parent);

    [[nodiscard]] virtual Strip* makeStrip(int place, QWidget* parent) = 0;
    // As many strips as there are elements, each as its element is now.
    void showStrips(std::size_t count);
    // Scrolls so far that the strip can be seen, should there be one.
    void bringIntoView(int place);
    [[nodiscard]] const std::vector<Strip*>& strips() const { return strips_; }

private:
    ColumnArea* area_;
    EmptyState* empty_ = nullptr;
    QWidget* content_;
    QVBoxLayout* column_;
    std::vector<Strip*> strips_;
};

} // namespace Desktop
