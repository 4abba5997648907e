#include "desktop/panels/LayerStrip.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/LayerDetails.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/RangeBar.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace Desktop {

using Backend::Layers::Layer;

LayerStrip::LayerStrip(Models& models, int layer, QWidget* parent) : Strip(parent), models_(models), place_(layer) {
    const QString name = tr("Layer %1").arg(layer + 1);
    setAccessibleName(name);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(grid(4), grid(1), grid(2), grid(1));
    all->setSpacing(grid(1));
    auto* const top = new QHBoxLayout;
    top->setSpacing(grid(2));
    name_ = new QToolButton(this);
    name_->setObjectName("Flat");
    name_->setText(QStringLiteral("L:%1").arg(layer + 1));
    name_->setCheckable(true);
    name_->setFocusPolicy(Qt::TabFocus);
    name_->setAccessibleName(tr("Details of layer %1").arg(layer + 1));
    name_->setStatusTip(tr("Selects the layer and opens its settings"));
    top->addWidget(name_);
    summary_ = new ElidedLabel(this);
    summary_->setObjectName("Dim");
    top->addWidget(summary_, 1);
    const auto button = [&](const QString& text, const QString& what, const QString& help) {
        auto* const made = new QPushButton(text, this);
        made->setObjectName("Small");
        made->setCheckable(true);
        made->setFocusPolicy(Qt::TabFocus);
        made->setAccessibleName(tr("%1 of layer %2").arg(what).arg(place_ + 1));
        made->setStatusTip(help);
        return made;
    };
    mute_ = button("M", tr("Mute"), tr("The layer plays nothing"));
    solo_ = button("S", tr("Solo"), tr("As long as there is a soloist, only soloists play"));
    mono_ = button(tr("mono"), tr("Mono"), tr("One note at a time"));
    const auto onOff = [this](QPushButton* made, const QString& text, bool Layer::*which) {
        connect(made, &QPushButton::clicked, this, [this, text, which](bool on) {
            models_.edits.alone([&] { change(text, [&](Layer& l) { l.*which = on; }); });
        });
    };
    onOff(mute_, tr("mute"), &Layer::mute);
    onOff(solo_, tr("solo"), &Layer::solo);
    onOff(mono_, tr("mono"), &Layer::mono);
    for (QPushButton* const each : {mute_, solo_, mono_}) {
        top->addWidget(each);
    }
    auto* const more = new QToolButton(this);
    more->setObjectName("Flat");
    more->setText("⋮");
    more->setAccessibleName(tr("Menu of layer %1").arg(layer + 1));
    more->setStatusTip(tr("Moves or removes the layer"));
    more->setFocusPolicy(Qt::TabFocus);
    more->setPopupMode(QToolButton::InstantPopup);
    auto* const menu = new QMenu(more);
    menu->addAction(tr("Move up"), this, [this] { models_.layers.moveTo(place_, place_ - 1); });
    menu->addAction(tr("Move down"), this, [this] { models_.layers.moveTo(place_, place_ + 1); });
    menu->addAction(tr("Remove"), this, [this] { models_.layers.remove(place_); });
    more->setMenu(menu);
    top->addWidget(more);
    all->addLayout(top);
    range_ = new RangeBar(this);
    range_->describe(tr("Notes of layer %1").arg(layer + 1),
                     tr("The notes that the layer takes: drag the ends, or the whole bar"));
    connect(range_, &RangeBar::moved, this, [this](int low, int high) {
        change(tr("the notes of a layer"), [=](Layer& l) {
            l.minNote = Note(low);
            l.maxNote = Note(high);
        });
    });
    connect(range_, &RangeBar::letGo, this, [this] { models_.edits.endOfGesture(); });
    all->addWidget(range_);
    details_ = new LayerDetails(
        models, layer, [this](const QString& text, const std::function<void(Layer&)>& work) { change(text, work); },
        this);
    details_->hide();
    all->addWidget(details_);
    connect(name_, &QToolButton::clicked, this, [this](bool on) {
        details_->setVisible(on);
        models_.layers.select(place_);
    });
    refresh();
}

Layer LayerStrip::layer() const {
    const auto place = static_cast<std::size_t>(place_);
    return place < models_.layers.layers().size() ? models_.layers.layers()[place] : Layer{};
}

void LayerStrip::change(const QString& text, const std::function<void(Layer&)>& work) {
    Layer after = layer();
    work(after);
    models_.layers.change(tr("%1 of layer %2").arg(text).arg(place_ + 1), place_, after);
}

void LayerStrip::refresh() {
    const Layer now = layer();
    summary_->setText(models_.layers.summary(place_));
    summary_->setToolTip(summary_->text());
    range_->setRange(now.minNote.getNumber(), now.maxNote.getNumber());
    range_->setColour(Desktop::palette().inTurn(place_));
    range_->setEnabled(!now.mute);
    mute_->setChecked(now.mute);
    solo_->setChecked(now.solo);
    mono_->setChecked(now.mono);
    details_->refresh(now);
    update();
}

void LayerStrip::showLamp() {
    const Layer now = layer();
    const bool lit = !now.mute && models_.playing.isChannelBusy(now.channel, now.output);
    if (lit != lit_) {
        lit_ = lit;
        update();
    }
}

void LayerStrip::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        models_.layers.select(place_);
    }
}

void LayerStrip::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool edited = models_.layers.selectedForEdit() == place_;
    const bool selected = models_.layers.selected() == place_;
    painter.setPen(QPen(edited ? p.amber : selected ? p.dim : p.line, 1));
    painter.setBrush(p.raised);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(p.inTurn(place_));
    painter.drawRoundedRect(QRectF(0, 0, 4, height()), 2, 2);
    painter.setBrush(lit_ ? p.green : p.line);
    const double lamp = grid(2);
    const double middle = name_->geometry().center().y();
    painter.drawEllipse(QRectF(grid(1) + 3, middle - lamp / 2, lamp, lamp));
}

} // namespace Desktop
