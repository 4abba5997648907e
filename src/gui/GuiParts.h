// The parts of the user interface that its other parts find through the facade. All are [gui].
#pragma once

#include <string>
#include <vector>

namespace Gui {

// Colours and fonts.
class GdiManager {
public:
    virtual ~GdiManager() = default;
    // Height of a line of text in pixels.
    [[nodiscard]] virtual int lineHeight() const = 0;
};

// The palettes that the window can be drawn in.
class Skinner {
public:
    virtual ~Skinner() = default;
    [[nodiscard]] virtual std::vector<std::string> skins() const = 0;
    [[nodiscard]] virtual std::string skin() const = 0;
    // An unknown name changes nothing.
    virtual void setSkin(const std::string& name) = 0;
};

// A menu that belongs to the whole window.
class PopupMenu {
public:
    virtual ~PopupMenu() = default;
    // Below the button that it belongs to.
    virtual void show() = 0;
};

// A panel whose section has presets.
class PresetGuiOwner {
public:
    virtual ~PresetGuiOwner() = default;
    // The preset that the section was last loaded from or saved as; may be empty.
    [[nodiscard]] virtual std::string presetName() const = 0;
    virtual void loadPreset(const std::string& name) = 0;
    virtual void savePreset(const std::string& name) = 0;
};

class MusicKeyboardCtl {
public:
    virtual ~MusicKeyboardCtl() = default;
    virtual void clearHilight() = 0;
};

class OutputPanel {
public:
    virtual ~OutputPanel() = default;
    // The zone and channel that what is struck on it goes to; -1: none, the default one.
    virtual void setZone(int zone) = 0;
    virtual void setChannel(int channel) = 0;
};

// Catches keys while another program has the keyboard.
class KeyboardHookProxy {
public:
    virtual ~KeyboardHookProxy() = default;
    // Empty when it can, else why this system does not let it.
    [[nodiscard]] virtual std::string obstacle() const = 0;
    virtual void setActive(bool on) = 0;
};

} // namespace Gui
