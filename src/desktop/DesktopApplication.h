// The desktop as the host sees it. No toolkit shows here.
#pragma once

#include "gui/GuiCopies.h"
#include "gui/QelGuiIF.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Desktop {

// Whether a window can be opened here. [main]
[[nodiscard]] bool hasDisplay();

// What the host has to say, asked about ten times a second.
struct HostNews {
    bool end = false;                // the program is to end
    std::vector<std::string> faults; // files that could not be read or written
    Gui::HostStatus status;
};

// The toolkit from its start to its end, around the life of the backend. One at a time, on the main thread.
class DesktopApplication final {
public:
    // Starts the toolkit and registers the user interface with its factory. `look` outlives the object.
    explicit DesktopApplication(std::function<HostNews()> look);
    // The user interface that came from here is gone by then.
    ~DesktopApplication();
    DesktopApplication(const DesktopApplication&) = delete;
    DesktopApplication& operator=(const DesktopApplication&) = delete;

    // Opens the window of a user interface that the factory made, and runs until it is closed or the host ends. What
    // was held is let go then.
    void run(Gui::QelGuiIF& gui);

private:
    struct Toolkit;
    std::unique_ptr<Toolkit> toolkit_;
};

} // namespace Desktop
