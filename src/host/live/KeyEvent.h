// A key of the keyboard that is played on, going down, repeating or coming up.
#pragma once

#include "host/Performance.h"
#include "values/Key.h"

namespace Host {

struct KeyEvent {
    Key key; // with the modifiers held at that moment
    Press press = Press::down;

    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

} // namespace Host
