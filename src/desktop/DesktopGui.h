// The user interface behind the facade: the main window, its models and the keyboard.
#pragma once

#include "desktop/KeyCapture.h"
#include "desktop/MainWindow.h"
#include "desktop/Reach.h"
#include "desktop/models/Models.h"
#include "gui/GuiParts.h"
#include "gui/QelGui.h"

#include <QObject>
#include <QTimer>
#include <memory>

namespace Desktop {

// Made on the backend's thread, where it does nothing but keep copies; all else on the main thread.
class DesktopGui final : public Gui::QelGui {
public:
    DesktopGui(Backend::QelIF& backend, const Backend::RegistrySettings& settings,
               const std::vector<Backend::MidiInputPort>& inputs, const std::vector<Backend::MidiOutputPort>& outputs,
               const Gui::SequencePresetList& sequences);
    ~DesktopGui() override;

    void initialize() override;
    void end() override;
    void create(Platform::WindowHandle parent) override;
    void destroy() override;

    // Handles what has been posted, now; else that happens once a frame.
    void takeIn();
    [[nodiscard]] MainWindow& window() { return *shown_->window; }
    [[nodiscard]] Models& models() { return *shown_->models; }
    [[nodiscard]] KeyCapture& keys() { return *shown_->keys; }

    Gui::GdiManager& getGdiManager() override;
    Gui::Skinner& getSkinner() override;
    Gui::PresetGuiOwner* getComputerInputPanelAsPresetGuiOwner() override;
    Gui::PresetGuiOwner* getControlPanelAsPresetGuiOwner() override;
    Gui::PresetGuiOwner* getLayerPanelAsPresetGuiOwner() override;
    Gui::PresetGuiOwner* getOscillatorPanelAsPresetGuiOwner() override;
    Gui::PresetGuiOwner* getJoystickInputPanelAsPresetGuiOwner() override;
    Gui::PresetGuiOwner* getMidiInputPanelAsPresetGuiOwner() override;
    Gui::OutputPanel& getOutputPanel() override;
    Gui::PopupMenu& getGmProgramMenu() override;
    Gui::PopupMenu& getDataMenu() override;
    void setDockToBottomEdge(bool on) override;
    Gui::MusicKeyboardCtl& getMainMusicKeyboardCtl() override;
    void addSequencePreset(const std::string& name, const std::string& sequence) override;
    void editSequencePreset(const std::string& name, const std::string& sequence) override;
    void deleteSequencePreset(const std::string& name) override;
    Gui::KeyboardHookProxy& getKeyboardHookProxy() override;
    WindowsLib::Rect getMainWindowPosition() override;

private:
    // What lives on the main thread.
    struct Shown {
        std::unique_ptr<Models> models;
        std::unique_ptr<MainWindow> window;
        std::unique_ptr<KeyCapture> keys;
        std::unique_ptr<WakeUp> wake;
        std::unique_ptr<Gui::KeyboardHookProxy> hook;
        std::unique_ptr<FocusWatch> focus;
        QTimer frame; // runs while messages wait
    };

    struct Parts;
    std::unique_ptr<Shown> shown_;
    std::unique_ptr<Parts> parts_; // of the window
};

} // namespace Desktop
