#include "desktop/DesktopRig.h"

#include "core/QelMessageManager.h"

#include <QApplication>

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
