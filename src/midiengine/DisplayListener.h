// Who wants to see what the engine sends.
#pragma once

#include "midiengine/DisplayRecord.h"

namespace Backend::Display {

// Told of every message that the engine sends, in order, some time after. Called on the display thread, where it may
// take its time: what comes meanwhile waits, up to DisplayMessageManager::capacity records.
class DisplayListener {
public:
    virtual void messageSent(const DisplayRecord& record) = 0; // [display]

protected:
    ~DisplayListener() = default;
};

} // namespace Backend::Display
