// A connection of our own to the X server.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Desktop {

class XDisplay final {
public:
    // The server that the environment names.
    XDisplay();
    ~XDisplay();
    XDisplay(const XDisplay&) = delete;
    XDisplay& operator=(const XDisplay&) = delete;

    [[nodiscard]] bool isOpen() const;
    // What the key types without modifiers in the present layout, in upper case; empty for keys that type nothing.
    [[nodiscard]] std::string textOnKey(std::uint32_t keycode) const;

    // From now on every key of the whole system is told, grabbing none from others. False where the server cannot.
    [[nodiscard]] bool watchKeys();
    [[nodiscard]] int descriptor() const; // becomes readable when there is something
    // Tells what has happened since the last call.
    void readKeys(const std::function<void(std::uint32_t keycode, bool down)>& listener);

private:
    struct Connection;
    std::unique_ptr<Connection> connection_;
};

} // namespace Desktop
