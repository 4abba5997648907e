// Hands the keys of a terminal to the backend.
#pragma once

#include "host/live/KeyEvent.h"

#include <vector>

namespace Backend {
class QelIF;
}

namespace Host {

class LivePlayer;

// In order. On a thread that is not the backend's.
void postKeys(Backend::QelIF& qel, const std::vector<KeyEvent>& events);

// Waits, but never long, until what was posted before has ended its notes.
void waitForSilence(Backend::QelIF& qel, const LivePlayer& player);

} // namespace Host
