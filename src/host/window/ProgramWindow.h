// The window of the program, where it was built with one.
#pragma once

#include "gui/GuiCopies.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Backend {
class QelIF;
}

namespace Host {

// What the window asks the host about ten times a second.
struct WindowNews {
    bool end = false; // it is to close
    std::vector<std::string> faults;
    Gui::HostStatus status;
};

// Around the life of the backend, on the main thread.
class ProgramWindow {
public:
    virtual ~ProgramWindow() = default;
    ProgramWindow(const ProgramWindow&) = delete;
    ProgramWindow& operator=(const ProgramWindow&) = delete;

    // Opens the window and runs until it is closed or the news end it.
    virtual void run(Backend::QelIF& qel) = 0;

protected:
    ProgramWindow() = default;
};

// Null where there is no display, or where the program was built without a window.
[[nodiscard]] std::unique_ptr<ProgramWindow> makeProgramWindow(std::function<WindowNews()> look);

} // namespace Host
