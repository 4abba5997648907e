// The real window in front of the whole backend, in one process: a player without devices, the test as the clock.
#pragma once

#include "backend/BackendRig.h"
#include "desktop/DesktopGui.h"
#include "gui/GuiCopies.h"

#include <QWidget>
#include <functional>
#include <string>

class DesktopRig final {
public:
    DesktopRig();
    ~DesktopRig();
    DesktopRig(const DesktopRig&) = delete;
    DesktopRig& operator=(const DesktopRig&) = delete;

    // Does something with the window, lets the backend do what that posted and the window take in what came of it.
    // Gives what was played, as BackendRig::after.
    std::string after(const std::function<void()>& work);
    // The same for an operation of the backend.
    std::string afterCall(const std::function<void(Backend::QelIF&)>& operation);

    [[nodiscard]] Desktop::MainWindow& window() { return gui->window(); }
    [[nodiscard]] Desktop::Models& models() { return gui->models(); }
    // The only child of that type with that accessible name; null without one.
    template <typename Widget> [[nodiscard]] Widget* find(const QString& name) {
        for (Widget* const each : window().findChildren<Widget*>()) {
            if (each->accessibleName() == name) {
                return each;
            }
        }
        return nullptr;
    }
    // The same; fails the test without one.
    template <typename Widget> [[nodiscard]] Widget& named(const QString& name) {
        if (Widget* const found = find<Widget>(name)) {
            return *found;
        }
        throw std::runtime_error("no widget is named " + name.toStdString());
    }

    // Hands, on widgets by their accessible names. Each lets the backend do what came of it, and gives what was played.
    std::string pick(const QString& menu, const QString& item);
    std::string set(const QString& field, int value); // as a gesture of its own
    std::string click(const QString& button);
    std::string undo();
    static void wheel(QWidget& widget, int notches);

    BackendRig backend;
    Desktop::DesktopGui* gui = nullptr;
};
