#include "platform/OwnModule.h"

#include <dlfcn.h>
#include <system_error>

namespace Platform {

std::filesystem::path programFile() {
    std::error_code unknown;
    std::filesystem::path file = std::filesystem::read_symlink("/proc/self/exe", unknown);
    return unknown ? std::filesystem::path() : file;
}

std::filesystem::path moduleFile() {
    Dl_info module{};
    if (::dladdr(reinterpret_cast<const void*>(&moduleFile), &module) == 0 || module.dli_fname == nullptr) {
        return {};
    }
    std::error_code unknown;
    std::filesystem::path file = std::filesystem::canonical(module.dli_fname, unknown);
    return unknown ? std::filesystem::path() : file;
}

void* ownModuleHandle() {
    Dl_info module{};
    if (::dladdr(reinterpret_cast<const void*>(&ownModuleHandle), &module) == 0) {
        return nullptr;
    }
    // The module stays loaded while it runs: its count of users is not the caller's business.
    void* const handle = ::dlopen(module.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr) {
        ::dlclose(handle);
        return handle;
    }
    return ::dlopen(nullptr, RTLD_LAZY); // part of the program itself
}

} // namespace Platform
