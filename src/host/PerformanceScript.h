// A performance script as a performance.
#pragma once

#include "host/Performance.h"
#include "host/ScriptReader.h"
#include "platform/Result.h"

#include <memory>
#include <string>
#include <string_view>

namespace Host {

// Holds the text and reads each line when its turn comes: a long script costs no more memory than its file.
class PerformanceScript final : public Performance {
public:
    // Checks the whole text; `name` and `inputs` as of ScriptReader.
    [[nodiscard]] static Platform::Result<std::unique_ptr<PerformanceScript>> open(std::string text,
                                                                                   const std::string& name, int inputs);

    [[nodiscard]] bool next(PerformanceEvent& event) override;

private:
    PerformanceScript(std::string text, const std::string& name, int inputs);
    [[nodiscard]] bool takeLine(std::string_view& line);
    [[nodiscard]] Platform::Outcome check(ScriptReader reader);

    std::string text_;
    std::string_view rest_;
    ScriptReader reader_;
};

} // namespace Host
