// Turns the keyboard into an instrument: what is pressed in the main window plays.
#pragma once

#include "values/Key.h"

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <map>

class QKeyEvent;
class QWidget;

namespace Desktop {

// Sees every event of the application. Keys are taken by their place on the keyboard. A key plays when it is mapped and
// the main window has the keyboard, unless text is being typed. Where the focus was moved by keys, those that move and
// press (arrows, Space, Enter ...) belong to what has it, until Escape. A key that is down plays its way up whatever
// has happened since; all that is down comes up when the window loses the keyboard, when a menu or a dialog opens, and
// when the window is hidden. Escape held is panic.
class KeyCapture final : public QObject {
    Q_OBJECT

public:
    struct Player {
        std::function<bool(const Key&)> isMapped;
        std::function<bool(const Key&)> isGlobal; // mapped, and played while another program has the keyboard
        std::function<void(const Key&, bool repeat)> down;
        std::function<void(const Key&)> up;
        std::function<void()> panic;
        std::function<void(std::uint32_t code, const QString& text)> typed; // what a key types in the live layout
    };

    // Both outlive the object.
    KeyCapture(QWidget& window, Player player);
    ~KeyCapture() override;

    void releaseAll();
    // A key of the whole system, told while another program has the keyboard.
    void globalKey(std::uint32_t scanCode, bool isDown);
    // The keyboard has left the windows of this program or has come back: where the system says so before the toolkit.
    void keyboardMoved(bool isHere);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    [[nodiscard]] bool hasKeyboard() const;
    [[nodiscard]] bool plays(const QKeyEvent& event, const Key& key) const;
    bool keyDown(const QKeyEvent& event);
    bool keyUp(const QKeyEvent& event);

    QWidget& window_;
    Player player_;
    std::map<std::uint32_t, Key> down_; // by code
    std::uint32_t globalModifiers_ = 0;
    bool focusByKeys_ = false;
    bool isElsewhere_ = false; // the keyboard, as far as the system has said
    QTimer escape_;
};

// The key of an event: by scan code, or, when it has none, by what the toolkit calls it.
[[nodiscard]] Key keyOf(const QKeyEvent& event);

} // namespace Desktop
