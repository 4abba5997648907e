#include "platform/ThreadServices.h"

#include <objbase.h>

namespace Platform {

void initializeThreadServices() noexcept {
    static_cast<void>(CoInitialize(nullptr));
}
void uninitializeThreadServices() noexcept {
    CoUninitialize();
}

} // namespace Platform
