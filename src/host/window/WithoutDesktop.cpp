#include "host/window/ProgramWindow.h"

namespace Host {

std::unique_ptr<ProgramWindow> makeProgramWindow(std::function<WindowNews()>) {
    return nullptr;
}

} // namespace Host
