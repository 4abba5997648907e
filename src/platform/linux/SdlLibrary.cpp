#include "platform/linux/SdlLibrary.h"

#include <dlfcn.h>
#include <optional>

namespace Platform {

namespace {

template <typename Function> bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

std::optional<SdlLibrary> load() {
    void* const library = dlopen("libSDL2-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return std::nullopt;
    }
    SdlLibrary sdl;
    const bool complete =
        find(library, "SDL_SetHint", sdl.setHint) && find(library, "SDL_InitSubSystem", sdl.initSubSystem) &&
        find(library, "SDL_QuitSubSystem", sdl.quitSubSystem) && find(library, "SDL_WasInit", sdl.wasInit) &&
        find(library, "SDL_Quit", sdl.quit) && find(library, "SDL_TLSCleanup", sdl.cleanUpThread) &&
        find(library, "SDL_JoystickEventState", sdl.eventState) && find(library, "SDL_FlushEvents", sdl.flushEvents) &&
        find(library, "SDL_JoystickUpdate", sdl.update) && find(library, "SDL_NumJoysticks", sdl.count) &&
        find(library, "SDL_JoystickGetDeviceInstanceID", sdl.instanceOfDevice) &&
        find(library, "SDL_JoystickInstanceID", sdl.instanceOf) && find(library, "SDL_JoystickOpen", sdl.open) &&
        find(library, "SDL_JoystickClose", sdl.close) && find(library, "SDL_JoystickGetAttached", sdl.isAttached) &&
        find(library, "SDL_JoystickNumAxes", sdl.axisCount) &&
        find(library, "SDL_JoystickNumButtons", sdl.buttonCount) && find(library, "SDL_JoystickGetAxis", sdl.axis) &&
        find(library, "SDL_JoystickGetButton", sdl.button);
    if (!complete) {
        return std::nullopt;
    }
    find(library, "SDL_JoystickAttachVirtual", sdl.attachVirtual);
    find(library, "SDL_JoystickDetachVirtual", sdl.detachVirtual);
    find(library, "SDL_JoystickSetVirtualAxis", sdl.setVirtualAxis);
    find(library, "SDL_JoystickSetVirtualButton", sdl.setVirtualButton);
    find(library, "SDL_JoystickFromInstanceID", sdl.fromInstance);
    return sdl;
}

} // namespace

const SdlLibrary* SdlLibrary::get() {
    static const std::optional<SdlLibrary> library = load();
    return library ? &*library : nullptr;
}

} // namespace Platform
