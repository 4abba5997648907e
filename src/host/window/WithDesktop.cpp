#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/DesktopApplication.h"
#include "host/window/ProgramWindow.h"

#include <utility>

namespace Host {

namespace {

class DesktopWindow final : public ProgramWindow {
public:
    explicit DesktopWindow(std::function<WindowNews()> look)
        : desktop_([look = std::move(look)] {
              WindowNews news = look();
              return Desktop::HostNews{news.end, std::move(news.faults), std::move(news.status)};
          }) {}

    void run(Backend::QelIF& qel) override {
        if (Gui::QelGuiIF* const gui = qel.getQelMessageManager().sendCreateQelGui(false)) {
            desktop_.run(*gui);
        }
    }

private:
    Desktop::DesktopApplication desktop_;
};

} // namespace

std::unique_ptr<ProgramWindow> makeProgramWindow(std::function<WindowNews()> look) {
    return Desktop::hasDisplay() ? std::make_unique<DesktopWindow>(std::move(look)) : nullptr;
}

} // namespace Host
