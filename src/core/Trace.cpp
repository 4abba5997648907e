#include "core/Trace.h"

#include "platform/Notices.h"

#include <fstream>
#include <system_error>
#include <utility>

namespace Backend {

namespace {

constexpr const char* fileName = "qel.log";
constexpr const char* oldFileName = "qel.old.log";

[[nodiscard]] std::string_view withoutFolders(std::string_view source) {
    const auto separator = source.find_last_of("/\\");
    return separator == std::string_view::npos ? source : source.substr(separator + 1);
}

} // namespace

Trace::Trace(std::filesystem::path folder) : folder_(std::move(folder)) {}

void Trace::write(std::string_view message, std::string_view detail, const std::source_location& where) {
    const std::string line = format(where.file_name(), where.line(), message, detail);
    Platform::writeDebugOutput(line);
    if (!folder_.empty()) {
        const std::lock_guard lock(mutex_);
        append(line + '\n');
    }
}

std::string Trace::format(std::string_view source, unsigned line, std::string_view message, std::string_view detail) {
    std::string text = "QEL_TRACE: ";
    text.append(withoutFolders(source)).append(":").append(std::to_string(line)).append(" -- ").append(message);
    if (!detail.empty()) {
        text.append(" -- ").append(detail);
    }
    return text;
}

void Trace::append(const std::string& line) {
    const std::filesystem::path file = folder_ / fileName;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (!error && size + line.size() > MAX_FILE_SIZE) {
        std::filesystem::rename(file, folder_ / oldFileName, error);
        if (error) {
            return; // better a line lost than a file without bound
        }
    }
    std::ofstream(file, std::ios::app | std::ios::binary) << line;
}

} // namespace Backend
