// A user interface without a window: it has the endpoint and notes what is posted to it.
#pragma once

#include "core/GuiMessageManager.h"
#include "core/MessageParameters.h"
#include "gui/GuiParts.h"
#include "gui/QelGui.h"
#include "values/Rect.h"

#include <functional>
#include <map>
#include <stdexcept>

namespace TestSupport {

// Handlers are given per message number and free their copies; other messages are dropped, so give handlers to all
// that carry one.
class BareGui final : public Gui::QelGui, private Backend::GuiMessageManager {
public:
    using QelGui::QelGui;
    using Handler = std::function<void(std::uintptr_t wParam, std::intptr_t lParam)>;

    // What is still on its way is taken while the handlers are there.
    ~BareGui() override {
        stopListening();
        closeWindow();
    }

    std::map<std::uint32_t, Handler> handlers;

    template <typename Value> void on(std::uint32_t id, std::function<void(const Value&)> work) {
        handlers[id] = [this, work](std::uintptr_t w, std::intptr_t) {
            if (w == 0) {
                return;
            }
            const auto copy = Backend::takeCopy<Value>(w);
            if (isListening_) {
                work(*copy);
            }
        };
    }
    // From now on copies are freed and shown to nobody: at the end of a test, whose variables are gone.
    void stopListening() { isListening_ = false; }

    void initialize() override {}
    void end() override {}
    void create(Platform::WindowHandle) override {
        getGuiMessageManagerMaster().addMessageManager(*this);
        openWindow({});
    }
    void destroy() override { closeWindow(); }
    Gui::GdiManager& getGdiManager() override { return missing<Gui::GdiManager>(); }
    Gui::Skinner& getSkinner() override { return missing<Gui::Skinner>(); }
    Gui::PresetGuiOwner* getComputerInputPanelAsPresetGuiOwner() override { return nullptr; }
    Gui::PresetGuiOwner* getControlPanelAsPresetGuiOwner() override { return nullptr; }
    Gui::PresetGuiOwner* getLayerPanelAsPresetGuiOwner() override { return nullptr; }
    Gui::PresetGuiOwner* getOscillatorPanelAsPresetGuiOwner() override { return nullptr; }
    Gui::PresetGuiOwner* getJoystickInputPanelAsPresetGuiOwner() override { return nullptr; }
    Gui::PresetGuiOwner* getMidiInputPanelAsPresetGuiOwner() override { return nullptr; }
    Gui::OutputPanel& getOutputPanel() override { return missing<Gui::OutputPanel>(); }
    Gui::PopupMenu& getGmProgramMenu() override { return missing<Gui::PopupMenu>(); }
    Gui::PopupMenu& getDataMenu() override { return missing<Gui::PopupMenu>(); }
    void setDockToBottomEdge(bool) override {}
    Gui::MusicKeyboardCtl& getMainMusicKeyboardCtl() override { return missing<Gui::MusicKeyboardCtl>(); }
    void addSequencePreset(const std::string&, const std::string&) override {}
    void editSequencePreset(const std::string&, const std::string&) override {}
    void deleteSequencePreset(const std::string&) override {}
    Gui::KeyboardHookProxy& getKeyboardHookProxy() override { return missing<Gui::KeyboardHookProxy>(); }
    WindowsLib::Rect getMainWindowPosition() override { return {}; }

    void showing(Gui::Panel panel, bool on) { noteShowing(panel, on); }

private:
    [[nodiscard]] bool wantMessage(std::uint32_t id) const override { return handlers.contains(id); }
    void handleMessage(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) override {
        handlers.at(id)(wParam, lParam);
    }
    template <typename Part> [[noreturn]] static Part& missing() {
        throw std::logic_error("this user interface has no such part");
    }

    bool isListening_ = true;
};

} // namespace TestSupport
