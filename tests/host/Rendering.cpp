#include "host/Rendering.h"

#include "host/CommandLine.h"
#include "host/EventLine.h"
#include "host/EventSink.h"
#include "host/OfflinePlayer.h"
#include "host/PerformanceScript.h"
#include "host/Session.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace Host;

namespace {

class TextSink final : public EventSink {
public:
    void play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) override {
        appendEventLine(text, tick, message);
    }
    void setTempo(std::int32_t, int) override {}
    [[nodiscard]] bool isGood() const override { return true; }
    [[nodiscard]] Platform::Outcome finish(std::int32_t) override { return Platform::success(); }

    std::string text;
};

template <typename Port> std::vector<Port> ports(int count) {
    Port port;
    port.enabled = true;
    return std::vector<Port>(static_cast<std::size_t>(count), port);
}

} // namespace

std::string renderScript(const std::string& script, const std::string& program, std::size_t batch, int tail) {
    auto performance = PerformanceScript::open(script, "script", 2);
    if (!performance) {
        throw std::invalid_argument(performance.fault().text());
    }
    const TemporaryFolder folder;
    SessionOptions options;
    options.data = folder.path().string();
    if (!program.empty()) {
        options.program = (folder.path() / "test.prg").string();
        std::ofstream(*options.program) << program;
    }
    TextSink sink;
    OfflinePlayer player(sink);
    Session session(player, options);
    if (const auto started = session.start(ports<Backend::MidiInputPort>(2), ports<Backend::MidiOutputPort>(3));
        !started) {
        throw std::invalid_argument(started.fault().text());
    }
    Renderer(session.qel(), player, batch).render(*performance.value(), tail);
    return sink.text;
}

ProgramRun runTembrel(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv = {"tembrel"};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const int exitCode = runCommandLine(static_cast<int>(argv.size()), argv.data());
    std::string output = testing::internal::GetCapturedStdout();
    return {exitCode, testing::internal::GetCapturedStderr(), std::move(output)};
}
