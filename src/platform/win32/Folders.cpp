#include "platform/Folders.h"

#include <array>
#include <shlobj.h>

namespace Platform {

std::filesystem::path localApplicationDataFolder() {
    std::array<wchar_t, MAX_PATH> folder{};
    if (SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                         folder.data()) != S_OK) {
        SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_DONT_VERIFY, nullptr, SHGFP_TYPE_CURRENT,
                         folder.data());
    }
    return folder.data();
}

std::filesystem::path configurationFolder() {
    return localApplicationDataFolder();
}

} // namespace Platform
