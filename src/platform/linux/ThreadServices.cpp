#include "platform/ThreadServices.h"

namespace Platform {

void initializeThreadServices() noexcept {}
void uninitializeThreadServices() noexcept {}

} // namespace Platform
