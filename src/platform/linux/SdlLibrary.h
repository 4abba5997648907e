// The joystick part of SDL 2, loaded when the first joystick is looked for: linked, it would cost every start of the
// program the loading of some fifty libraries.
#pragma once

#include <SDL2/SDL.h>

namespace Platform {

struct SdlLibrary {
    decltype(&::SDL_SetHint) setHint = nullptr;
    decltype(&::SDL_InitSubSystem) initSubSystem = nullptr;
    decltype(&::SDL_QuitSubSystem) quitSubSystem = nullptr;
    decltype(&::SDL_WasInit) wasInit = nullptr;
    decltype(&::SDL_Quit) quit = nullptr;
    decltype(&::SDL_TLSCleanup) cleanUpThread = nullptr;
    decltype(&::SDL_JoystickEventState) eventState = nullptr;
    decltype(&::SDL_FlushEvents) flushEvents = nullptr;
    decltype(&::SDL_JoystickUpdate) update = nullptr;
    decltype(&::SDL_NumJoysticks) count = nullptr;
    decltype(&::SDL_JoystickGetDeviceInstanceID) instanceOfDevice = nullptr;
    decltype(&::SDL_JoystickInstanceID) instanceOf = nullptr;
    decltype(&::SDL_JoystickOpen) open = nullptr;
    decltype(&::SDL_JoystickClose) close = nullptr;
    decltype(&::SDL_JoystickGetAttached) isAttached = nullptr;
    decltype(&::SDL_JoystickNumAxes) axisCount = nullptr;
    decltype(&::SDL_JoystickNumButtons) buttonCount = nullptr;
    decltype(&::SDL_JoystickGetAxis) axis = nullptr;
    decltype(&::SDL_JoystickGetButton) button = nullptr;
    // For tests.
    decltype(&::SDL_JoystickAttachVirtual) attachVirtual = nullptr;
    decltype(&::SDL_JoystickDetachVirtual) detachVirtual = nullptr;
    decltype(&::SDL_JoystickSetVirtualAxis) setVirtualAxis = nullptr;
    decltype(&::SDL_JoystickSetVirtualButton) setVirtualButton = nullptr;
    decltype(&::SDL_JoystickFromInstanceID) fromInstance = nullptr;

    // Null when the system has no SDL 2. Stays loaded to the end of the program. [any]
    [[nodiscard]] static const SdlLibrary* get();
};

} // namespace Platform
