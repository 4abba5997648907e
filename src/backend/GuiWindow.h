// The window of the user interface, as the backend posts to it.
#pragma once

#include "core/MessageParameters.h"
#include "gui/QelGuiIF.h"
#include "midiengine/EngineTap.h"
#include "platform/WindowMessages.h"

#include <atomic>
#include <cstdint>

namespace Backend {

// Posting never waits; without a window it does nothing. As a tap it shows the window every message that the engine
// sends.
class GuiWindow final : public MidiEngine::EngineTap {
public:
    // `gui` lives as long as anybody posts. [backend]
    void setGui(Gui::QelGuiIF* gui) { gui_ = gui; }
    // The window is going: no handle any more. [backend]
    void forget() { gui_ = nullptr; }
    [[nodiscard]] Platform::WindowHandle handle() const; // [any]

    bool post(std::uint32_t id, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) const noexcept; // [any]
    // Posts a heap copy in wParam. [any]
    template <typename Value> bool postCopyOf(std::uint32_t id, const Value& value) const {
        return handle() != nullptr && postCopy(value, [&](std::uintptr_t copy) { return post(id, copy); });
    }

private:
    void passed(const MidiEngine::QelMidiMessage& message, bool swallowed) override;

    std::atomic<Gui::QelGuiIF*> gui_ = nullptr;
};

} // namespace Backend
