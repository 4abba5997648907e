#include "platform/OwnModule.h"

#include <string>
#include <windows.h>

namespace Platform {

namespace {

// Null: the program.
std::filesystem::path fileOf(HMODULE module) {
    constexpr std::size_t longestPath = 32768;
    std::wstring file(longestPath, L'\0');
    file.resize(GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size())));
    return file;
}

} // namespace

std::filesystem::path programFile() {
    return fileOf(nullptr);
}

std::filesystem::path moduleFile() {
    return fileOf(static_cast<HMODULE>(ownModuleHandle()));
}

void* ownModuleHandle() {
    HMODULE module = nullptr;
    const auto* const here = reinterpret_cast<const wchar_t*>(&ownModuleHandle);
    constexpr DWORD how = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return GetModuleHandleExW(how, here, &module) != 0 ? module : nullptr;
}

} // namespace Platform
