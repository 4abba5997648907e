#include "desktop/KeyCapture.h"

#include "desktop/KeyPlaces.h"
#include "desktop/Reach.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <utility>
#include <vector>

namespace Desktop {

namespace {

constexpr int panicMilliseconds = 600;
constexpr std::uint32_t escapeCode = 27;

bool isTextField(const QWidget* widget) {
    return widget != nullptr && widget->isEnabled() && widget->testAttribute(Qt::WA_InputMethodEnabled);
}

// Keys with which one works a widget.
bool worksWidgets(int key) {
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Delete:
    case Qt::Key_Insert:
    case Qt::Key_F2:
    case Qt::Key_Menu:
        return true;
    default:
        return false;
    }
}

// The modifier that a key is itself.
std::uint32_t ownModifier(std::uint32_t code) {
    switch (code) {
    case 16:
    case 161:
        return Key::SHIFT;
    case 17:
    case 225:
        return Key::CONTROL;
    case 164:
    case 165:
        return Key::ALT;
    case 91:
    case 92:
        return Key::WIN;
    default:
        return 0;
    }
}

std::uint32_t codeOf(const QKeyEvent& event) {
    if (event.nativeScanCode() > 1) {
        if (const std::uint32_t code = codeOfScanCode(event.nativeScanCode())) {
            return code;
        }
    }
    return codeOfToolkitKey(event.key(), event.modifiers().testFlag(Qt::KeypadModifier));
}

std::uint32_t modifiersOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    return (held.testFlag(Qt::ShiftModifier) ? Key::SHIFT : 0U) |
           (held.testFlag(Qt::ControlModifier) ? Key::CONTROL : 0U) | (held.testFlag(Qt::AltModifier) ? Key::ALT : 0U) |
           (held.testFlag(Qt::MetaModifier) ? Key::WIN : 0U);
}

} // namespace

Key keyOf(const QKeyEvent& event) {
    const std::uint32_t code = codeOf(event);
    return Key(code, modifiersOf(event) & ~ownModifier(code));
}

KeyCapture::KeyCapture(QWidget& window, Player player) : window_(window), player_(std::move(player)) {
    escape_.setSingleShot(true);
    escape_.setInterval(panicMilliseconds);
    connect(&escape_, &QTimer::timeout, this, [this] {
        releaseAll();
        player_.panic();
    });
    qApp->installEventFilter(this);
}

KeyCapture::~KeyCapture() {
    qApp->removeEventFilter(this);
}

bool KeyCapture::hasKeyboard() const {
    const QWidget* const active = QApplication::activeWindow();
    return active == &window_ && QApplication::activePopupWidget() == nullptr &&
           QApplication::activeModalWidget() == nullptr;
}

bool KeyCapture::plays(const QKeyEvent& event, const Key& key) const {
    if (key.getCode() == Key::NO_CODE || !hasKeyboard() || isTextField(QApplication::focusWidget())) {
        return false;
    }
    const bool belongsToFocus =
        focusByKeys_ && QApplication::focusWidget() != nullptr && worksWidgets(event.key()) && key.getModifiers() == 0;
    return !belongsToFocus && player_.isMapped(key);
}

bool KeyCapture::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        auto* const press = static_cast<QKeyEvent*>(event);
        if (object->isWidgetType() && plays(*press, keyOf(*press))) {
            press->accept(); // it plays, whatever menus would make of it
            return true;
        }
        break;
    }
    case QEvent::KeyPress:
        if (object->isWidgetType() && keyDown(*static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyRelease:
        if (object->isWidgetType() && keyUp(*static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
        break;
    case QEvent::FocusIn: {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason) {
            focusByKeys_ = true;
        } else if (reason == Qt::MouseFocusReason) {
            focusByKeys_ = false;
        }
        break;
    }
    case QEvent::WindowDeactivate:
    case QEvent::Hide:
    case QEvent::Close:
        if (object == &window_ && !(isElsewhere_ && event->type() == QEvent::WindowDeactivate)) {
            releaseAll();
        }
        break;
    case QEvent::ApplicationStateChange:
        if (!isElsewhere_) { // else all has been let go, and what is held now is held elsewhere
            releaseAll();
        }
        break;
    case QEvent::Show:
        if (auto* const widget = qobject_cast<QWidget*>(object);
            widget != nullptr && widget != &window_ && widget->isWindow() && widget->windowType() != Qt::ToolTip) {
            releaseAll();
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

bool KeyCapture::keyDown(const QKeyEvent& event) {
    const Key key = keyOf(event);
    if (!event.isAutoRepeat() && hasKeyboard() && !event.text().trimmed().isEmpty() && key.getModifiers() == 0) {
        player_.typed(key.getCode(), event.text().toUpper());
    }
    if (key.getCode() == escapeCode && hasKeyboard() && !event.isAutoRepeat()) {
        escape_.start();
        if (QWidget* const focus = QApplication::focusWidget(); focus != nullptr) {
            focus->clearFocus();
            focusByKeys_ = false;
        }
    }
    if (const auto held = down_.find(key.getCode()); held != down_.end()) {
        player_.down(held->second, true); // some systems send a second press instead of saying that it repeats
        return true;
    }
    if (!plays(event, key)) {
        return false;
    }
    if (!event.isAutoRepeat()) { // else it was held before we had the keyboard
        down_.emplace(key.getCode(), key);
        player_.down(key, false);
    }
    return true;
}

bool KeyCapture::keyUp(const QKeyEvent& event) {
    const Key key = keyOf(event);
    if (event.isAutoRepeat()) {
        return down_.contains(key.getCode());
    }
    if (key.getCode() == escapeCode) {
        escape_.stop();
    }
    if (down_.erase(key.getCode()) == 0) {
        return false;
    }
    player_.up(key);
    return true;
}

void KeyCapture::releaseAll() {
    escape_.stop();
    const auto held = std::exchange(down_, {});
    for (const auto& [code, key] : held) {
        player_.up(key);
    }
    globalModifiers_ = 0;
}

void KeyCapture::keyboardMoved(bool isHere) {
    isElsewhere_ = !isHere;
    if (isElsewhere_) {
        releaseAll();
    }
}

void KeyCapture::globalKey(std::uint32_t scanCode, bool isDown) {
    const std::uint32_t code = codeOfScanCode(scanCode);
    if (code == 0) {
        return;
    }
    if (!isElsewhere_ && QApplication::activeWindow() != nullptr) { // then it comes as an event, if it is for us
        return;
    }
    const std::uint32_t own = ownModifier(code);
    const Key key(code, globalModifiers_ & ~own);
    globalModifiers_ = isDown ? globalModifiers_ | own : globalModifiers_ & ~own;
    if (!isDown) {
        if (down_.erase(code) > 0) {
            player_.up(key);
        }
    } else if (const auto held = down_.find(code); held != down_.end()) {
        player_.down(held->second, true);
    } else if (player_.isGlobal(key)) {
        down_.emplace(code, key);
        player_.down(key, false);
    }
}

} // namespace Desktop
