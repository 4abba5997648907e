#include "desktop/DesktopRig.h"

#include "core/QelMessageManager.h"
#include "desktop/widgets/NumberField.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QWheelEvent>
#include <cstdlib>

DesktopRig::DesktopRig() {
    gui = dynamic_cast<Desktop::DesktopGui*>(backend.qel->getQelMessageManager().sendCreateQelGui(false));
    gui->initialize();
    gui->create(nullptr);
    window().activateWindow();
    QApplication::setActiveWindow(&window());
    after([] {});
}

DesktopRig::~DesktopRig() {
    after([this] { gui->destroy(); });
    backend.stop();
}

std::string DesktopRig::after(const std::function<void()>& work) {
    std::string played = backend.after([&](Backend::QelMessageManager&) {
        work();
        QApplication::processEvents();
    });
    gui->takeIn();
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return played;
}

std::string DesktopRig::afterCall(const std::function<void(Backend::QelIF&)>& operation) {
    return after([&] { backend.qel->getQelMessageManager().postCall(operation); });
}

std::string DesktopRig::pick(const QString& menu, const QString& item) {
    return after([&] {
        auto& box = named<QComboBox>(menu);
        box.setCurrentIndex(box.findText(item));
        if (box.currentIndex() < 0) {
            throw std::runtime_error(menu.toStdString() + " has no " + item.toStdString());
        }
        emit box.activated(box.currentIndex());
    });
}

std::string DesktopRig::set(const QString& field, int value) {
    return after([&] {
        auto& number = named<Desktop::NumberField>(field);
        number.setValueByUser(value);
        emit number.letGo();
    });
}

std::string DesktopRig::click(const QString& button) {
    return after([&] { named<QAbstractButton>(button).click(); });
}

std::string DesktopRig::undo() {
    return after([this] { models().edits.undo(); });
}

void DesktopRig::wheel(QWidget& widget, int notches) {
    const QPointF middle = QRectF(widget.rect()).center();
    for (int i = 0; i < std::abs(notches); ++i) {
        QWheelEvent event(middle, widget.mapToGlobal(middle), {}, {0, notches > 0 ? 120 : -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    }
}
