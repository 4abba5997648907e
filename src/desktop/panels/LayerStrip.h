// One layer at a glance: its notes, its summary, whether it plays; its settings open below.
#pragma once

#include "desktop/panels/StripsPanel.h"
#include "midiengine/Layer.h"

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <functional>

namespace Desktop {

class LayerDetails;
class Models;
class RangeBar;

class LayerStrip final : public Strip {
    Q_OBJECT

public:
    LayerStrip(Models& models, int layer, QWidget* parent);
    void refresh() override;
    void showLamp();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void change(const QString& text, const std::function<void(Backend::Layers::Layer&)>& work);
    [[nodiscard]] Backend::Layers::Layer layer() const;

    Models& models_;
    int place_;
    bool lit_ = false;
    RangeBar* range_;
    QToolButton* name_;
    QLabel* summary_;
    LayerDetails* details_;
    QPushButton *mute_, *solo_, *mono_;
};

} // namespace Desktop
