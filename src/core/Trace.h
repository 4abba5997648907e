// The developer's log: each line goes to the debug output and, where there is a folder, to the file "qel.log" in it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <source_location>
#include <string>
#include <string_view>

namespace Backend {

class Trace final {
public:
    // The file never grows beyond this many bytes: the line that would not fit begins a new one, and the full one
    // goes on as "qel.old.log" in place of an earlier of that name.
    static constexpr std::uintmax_t MAX_FILE_SIZE = 1024 * 1024;

    // No file.
    Trace() = default;
    // Without the folder, or when `folder` is empty, there is no file.
    explicit Trace(std::filesystem::path folder);
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    // Writes one line; an empty detail is left out. A file that cannot be written is passed over. Opens and closes the
    // file, so never on a thread that plays. [any but clock]
    void write(std::string_view message, std::string_view detail = {},
               const std::source_location& where = std::source_location::current());

    // "QEL_TRACE: source:line -- message -- detail", without a line end; of the source only the file's name.
    [[nodiscard]] static std::string format(std::string_view source, unsigned line, std::string_view message,
                                            std::string_view detail);

private:
    void append(const std::string& line);

    std::filesystem::path folder_;
    std::mutex mutex_; // one line at a time
};

} // namespace Backend
