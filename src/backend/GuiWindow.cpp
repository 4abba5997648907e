#include "backend/GuiWindow.h"

#include "gui/GuiMessages.h"
#include "values/QelMidiMessage.h"

namespace Backend {

Platform::WindowHandle GuiWindow::handle() const {
    Gui::QelGuiIF* const gui = gui_.load();
    return gui != nullptr ? gui->getWindowHandle() : nullptr;
}

bool GuiWindow::post(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) const noexcept {
    return Platform::postWindowMessage(handle(), {id, wParam, lParam});
}

void GuiWindow::passed(const MidiEngine::QelMidiMessage& message, bool) {
    post(idOf(Gui::GuiMessage::midiSent), static_cast<std::uintptr_t>(message.getWparam()),
         static_cast<std::intptr_t>(message.getLparam()));
}

} // namespace Backend
