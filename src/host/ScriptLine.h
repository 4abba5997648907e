// What one line of a performance script says.
#pragma once

#include "host/Performance.h"

#include <string>
#include <string_view>

namespace Host {

// Reads the words of one line, which outlives it, from left to right. Each step that fails leaves its reason.
class ScriptLine final {
public:
    // `text` without comment and end of line, `inputs` as in ScriptReader.
    ScriptLine(std::string_view text, int inputs) : rest_(text), inputs_(inputs) {}

    // The whole line; false when something is wrong in it.
    [[nodiscard]] bool read(PerformanceEvent& event);
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    using Content = decltype(PerformanceEvent::what);
    using Verb = bool (ScriptLine::*)(Content&);
    struct NamedVerb;
    static const NamedVerb verbs[];

    bool readMidi(Content& content);
    bool readKey(Content& content);
    bool readControl(Content& content);
    bool readAxis(Content& content);
    bool readButton(Content& content);
    bool readFunction(Content& content);
    bool readTranslation(Content& content);
    bool readTempo(Content& content);
    bool readReset(Content& content);
    bool readEnd(Content& content);

    bool readPort(MidiArrives& midi);
    bool readStatus(MidiArrives& midi);
    bool readDataByte(std::string_view word, std::uint8_t& data);
    bool readPress(Press& press);
    bool readXml(std::string& xml);
    // A number in decimal, with `hexToo` also 0x...; `what` names it in the reason.
    bool readNumber(std::string_view word, const char* what, std::int64_t least, std::int64_t greatest, bool hexToo,
                    std::int64_t& number);

    [[nodiscard]] std::string_view word();
    [[nodiscard]] std::string_view remaining() const;
    bool expectEnd();
    bool fail(std::string reason);

    std::string_view rest_;
    int inputs_;
    std::string reason_;
};

} // namespace Host
