#include "host/Rendering.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>

namespace {

// What plays moves controls and what moves them plays: for all their threads, equal performances give equal events.
TEST(ControlRendering, IsExact) {
    RandomCases random;
    const auto number = [&](int lowest, int highest) { return std::to_string(random.number(lowest, highest)); };
    const char* const controllers[] = {"0", "1", "7", "10", "32", "64"};
    const auto anyWhich = [&]() -> std::string {
        const char* const words[] = {"up", "down", "left", "right", "selected", "all", "0,1", "2,2", "0,7"};
        return words[random.number<std::size_t>(0, std::size(words) - 1)];
    };
    std::string script;
    int tick = 0;
    for (int line = 0; line < 200; ++line) {
        tick += random.number(0, 3) == 0 ? random.number(0, 900) : 0;
        script += std::to_string(tick);
        switch (random.number(0, 9)) {
        case 0:
            script += " control " + number(0, 2) + "," + number(0, 7) + " " + number(-10, 17'000);
            break;
        case 1:
            script += " function <SelectControl type=\"" + anyWhich() + "\"/>";
            break;
        case 2:
            script += " function <ChangeControl type=\"" + anyWhich() + "\" value=\"" +
                      (random.number(0, 1) == 0 ? "+" : "") + number(1, 9) + "\"/>";
            break;
        case 3:
            script += " function <SendControlData type=\"" + anyWhich() + "\"/>";
            break;
        default: // runs of messages, which are handed in many at once
            for (int more = random.number(0, 15); more > 0; --more) {
                script += " midi 0 0xB" + number(0, 9) + " " +
                          controllers[random.number<std::size_t>(0, std::size(controllers) - 1)] + " " +
                          number(0, 127) + "\n" + std::to_string(tick);
            }
            script += " midi 1 0xE0 " + number(0, 127) + " " + number(0, 127);
        }
        script += '\n';
    }
    const std::string program = "<ProgramFile><Program><Layers><Layer/><Layer channel=\"3\" output=\"1\"/></Layers>"
                                "</Program></ProgramFile>";
    const std::string events = renderScript(script, program, 0);
    for (const std::size_t batch : {std::size_t{0}, std::size_t{7}, Host::Renderer::usualBatch}) {
        EXPECT_EQ(renderScript(script, program, batch), events) << batch;
    }
}

} // namespace
