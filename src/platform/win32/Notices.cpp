#include "platform/Notices.h"

#include "platform/SystemNotices.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

namespace Platform {

void systemDebugOutput(const std::string& line) noexcept {
    OutputDebugStringA((line + '\n').c_str());
}

void systemMessageBox(const std::string& text, const std::string& caption) {
    MessageBoxA(GetForegroundWindow(), text.c_str(), caption.c_str(), MB_OK);
}

bool systemOpenDocument(const std::filesystem::path& document) {
    const auto outcome = ShellExecuteW(nullptr, L"open", document.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<std::intptr_t>(outcome) > 32;
}

} // namespace Platform
