#include "core/MessageManagerMaster.h"
#include "core/QelMessageManager.h"
#include "support/RandomCases.h"
#include "support/RecordingQel.h"

#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace Backend {
namespace {

using MidiEngine::MessageType;
using MidiEngine::MidiMessage;
using MidiEngine::QelMidiMessage;
using Calls = std::vector<std::string>;

// Sees the number of every message before the proxy does, and wants none.
class Spy final : public MessageManager {
public:
    using MessageManager::MessageManager;
    bool wantMessage(std::uint32_t id) const override {
        seen.push_back(static_cast<int>(id - Platform::applicationMessage));
        return false;
    }
    void handleMessage(const Platform::ThreadMessage&) override {}
    mutable std::vector<int> seen;
};

class QelMessageManagerTest : public testing::Test {
protected:
    QelMessageManagerTest() {
        master.addMessageManager(spy);
        master.addMessageManager(proxy);
        master.start();
    }
    ~QelMessageManagerTest() override { master.stop(); }
    // Until all that was posted is handled; what it does is not recorded.
    void drain() {
        Barrier barrier;
        ASSERT_TRUE(proxy.postBarrier(barrier));
        barrier.wait();
    }
    [[nodiscard]] Calls takeCalls() {
        drain();
        Calls calls = qel.takeCalls();
        EXPECT_EQ(calls.back(), "synchronize(barrier)");
        calls.pop_back();
        return calls;
    }
    // Without the barriers.
    [[nodiscard]] std::vector<int> takeIds() {
        std::vector<int> ids = std::exchange(spy.seen, {});
        std::erase(ids, 503);
        return ids;
    }

    TestSupport::RecordingQel qel;
    MessageManagerMaster master{"backend test"};
    Spy spy{master};
    QelMessageManager proxy{qel, master};
};

[[nodiscard]] Platform::WindowHandle window() {
    static int place = 0; // stands for a window: only its address travels
    return reinterpret_cast<Platform::WindowHandle>(&place);
}

[[nodiscard]] MidiInputPort inputPort(const char* name, bool enabled) {
    return {{name, "none", enabled, true}};
}
[[nodiscard]] MidiOutputPort outputPort(const char* name, bool enabled) {
    return {{name, "none", enabled, true}};
}

[[nodiscard]] ScreenState screen() {
    ScreenState state;
    state.zone = true;
    state.display = true;
    return state;
}

const QelMidiMessage untimed(MessageType::controllerChange, 7, 100, 3, 2, 1, 0, noTicks);
const QelMidiMessage timed(MessageType::noteOn, 60, 100, -1, -1, -1, -1, Ticks{5});

struct Row {
    int number;
    std::function<void(QelMessageManager&)> call;
    std::string recorded; // without the window, which is appended
    bool takesWindow = false;
};

[[nodiscard]] std::vector<Row> commands() {
    using M = QelMessageManager;
    return {
        {451, [](M& m) { m.sendInitialize(); }, "initialize()"},
        {452, [](M& m) { m.sendEnd(); }, "end()"},
        {453,
         [](M& m) {
             m.sendSetMidiInputPorts({inputPort("a", true), inputPort("b", false)});
         },
         "setMidiInputPorts([a+; b-])"},
        {454, [](M& m) { m.postSetMidiInputPorts({inputPort("c", true)}); }, "setMidiInputPorts([c+])"},
        {455, [](M& m) { m.sendSetMidiOutputPorts({outputPort("d", true)}); }, "setMidiOutputPorts([d+])"},
        {456, [](M& m) { m.postSetMidiOutputPorts({}); }, "setMidiOutputPorts([])"},
        {457, [](M& m) { m.sendEndInitialize(); }, "endInitialize()"},
        {458, [](M& m) { EXPECT_EQ(m.sendCreateQelGui(true), nullptr); }, "createQelGui(true)"},
        {459,
         [](M& m) {
             m.postSetLastWindowPosition({1, -2, 3, 4});
         },
         "setLastWindowPosition(1 -2 3 4)"},
        {460, [](M& m) { m.postRemoveGuiWindowHandle(); }, "removeGuiWindowHandle()"},
        {461, [](M& m) { m.postSetDockToBottomEdge(true); }, "setDockToBottomEdge(true)"},
        {462, [](M& m) { m.postSetDefaultBank("x.bnk"); }, "setDefaultBank(\"x.bnk\")"},
        {463, [](M& m) { m.postSetDisplayHeight(-5); }, "setDisplayHeight(-5)"},
        {464, [](M& m) { m.postSetDisplayNumbers(true); }, "setDisplayNumbers(true)"},
        {465, [](M& m) { m.postSetLargeDisplayFont(false); }, "setLargeDisplayFont(false)"},
        {466, [](M& m) { m.postSetDisplayMidiInputEvents(true); }, "setDisplayMidiInputEvents(true)"},
        {467, [](M& m) { m.postSetDisplayMidiOutputEvents(false); }, "setDisplayMidiOutputEvents(false)"},
        {468, [](M& m) { m.postSetAlwaysOnTop(true); }, "setAlwaysOnTop(true)"},
        {471, [](M& m) { m.postLoadProgram("x.prg"); }, "loadProgram(\"x.prg\")"},
        {472, [](M& m) { m.postLoadBank(std::string(5000, 'b')); }, "loadBank(\"" + std::string(5000, 'b') + "\")"},
        {473, [](M& m) { m.postImportVersion2Bank("a", "b", window()); }, "importVersion2Bank(\"a\", \"b\", ", true},
        {474, [](M& m) { m.postImportVersion2Program("c", "d", window()); }, "importVersion2Program(\"c\", \"d\", ",
         true},
        {475, [](M& m) { m.postImportVersion2Preset("e", "f", window()); }, "importVersion2Preset(\"e\", \"f\", ",
         true},
        {476, [](M& m) { m.postSaveToCurrentBank(7, window()); }, "saveToCurrentBank(7, ", true},
        {477, [](M& m) { m.postSaveToBank("x", window()); }, "saveToBank(\"x\", ", true},
        {478, [](M& m) { m.postSaveToProgram("y", nullptr); }, "saveToProgram(\"y\", no window)"},
        {479, [](M& m) { m.postPlayMidi(timed); }, "playMidi(144 60 100 0* -1 -1 -1 5 -1 -1 -1)"},
        {480, [](M& m) { m.postPlayMidi(untimed); }, "playMidi(176 7 100 3 2 1 0 -1 -1 -1 -1)"},
        {481, [](M& m) { m.postEnableMidiInput(3, true); }, "enableMidiInput(3, true)"},
        {482, [](M& m) { m.postEnableMidiOutput(4, false); }, "enableMidiOutput(4, false)"},
        {483, [](M& m) { m.postProcessMidiInputEvent(untimed); },
         "processMidiInputEvent(176 7 100 3 2 1 0 -1 -1 -1 -1)"},
        {484, [](M& m) { m.postProcessMidiInputEvent(timed); },
         "processMidiInputEvent(144 60 100 0* -1 -1 -1 5 -1 -1 -1)"},
        {485, [](M& m) { m.postResetQel(); }, "resetQel()"},
        {486, [](M& m) { m.postChangeBankSize(-1, window()); }, "changeBankSize(-1, ", true},
        {487, [](M& m) { m.postChangeProgramName(""); }, "changeProgramName(\"\")"},
        {488, [](M& m) { m.postAddSequencePreset("n", "s"); }, "addSequencePreset(\"n\", \"s\")"},
        {489, [](M& m) { m.postChangeProgram(SelectType("3")); }, "changeProgram(3)"},
        {490, [](M& m) { m.postChangeDefaultMidiOutput(SelectType("up")); }, "changeDefaultMidiOutput(up)"},
        {491, [](M& m) { m.postSetScreenState(screen()); }, "setScreenState(display zone)"},
        {492, [](M& m) { m.postSetUseSkinBorder(true); }, "setUseSkinBorder(true)"},
        {493, [](M& m) { m.postToggleSystemPanel(); }, "toggleSystemPanel()"},
        {494, [](M& m) { m.postSetRetroRecordBufferSize(99); }, "setRetroRecordBufferSize(99)"},
        {495, [](M& m) { m.postEnableRetroRecord(true); }, "enableRetroRecord(true)"},
        {496, [](M& m) { m.postChangeTempo(RelativeFixedValue("-12"), true); }, "changeTempo(-12, true)"},
        {497, [](M& m) { m.postChangeMidiThru(OnOffToggle("off"), false); }, "changeMidiThru(off, false)"},
        {498, [](M& m) { m.postChangeGlobalKeyboard(OnOffToggle(), true); }, "changeGlobalKeyboard(toggle, true)"},
        {499, [](M& m) { m.postSetTempoSource(255, true); }, "setTempoSource(255, true)"},
        {500, [](M& m) { m.postSetMouseSensitivity(2); }, "setMouseSensitivity(2)"},
        {501,
         [](M& m) {
             m.postProcessMidiInputEvents({untimed, timed});
         },
         "processMidiInputEvents([176 7 100 3 2 1 0 -1 -1 -1 -1; 144 60 100 0* -1 -1 -1 5 -1 -1 -1])"},
        {502, [](M& m) { m.postExecuteFunction("<ShowHelp/>"); }, "executeFunction(\"<ShowHelp/>\")"},
        {502, [](M& m) { m.postExecuteTranslation("<T/>", timed); },
         "executeTranslation(\"<T/>\", 144 60 100 0* -1 -1 -1 5 -1 -1 -1)"},
        {504, [](M& m) { m.postSetClickZoneChannelTranspose(true); }, "setClickZoneChannelTranspose(true)"},
        {502, [](M& m) { m.postPublishStatus(); }, "publishStatus()"},
    };
}

TEST_F(QelMessageManagerTest, EachCommandIsOneMessageAndOneCallOnTheBackendThread) {
    for (const Row& row : commands()) {
        SCOPED_TRACE(row.recorded.substr(0, 80));
        row.call(proxy);
        EXPECT_EQ(takeCalls(), Calls{row.recorded + (row.takesWindow ? TestSupport::textOf(window()) + ")" : "")});
        EXPECT_EQ(takeIds(), std::vector<int>{row.number});
        EXPECT_NE(qel.lastThread(), Platform::currentThreadId());
    }
}

TEST_F(QelMessageManagerTest, ClaimsItsRangeAndIgnoresWhatHasNoCommand) {
    constexpr std::uint32_t base = Platform::applicationMessage;
    for (std::uint32_t n = 440; n < 520; ++n) {
        EXPECT_EQ(proxy.wantMessage(base + n), n >= 450 && n <= 505) << n;
    }
    for (const std::uint32_t n : {450u, 469u, 470u, 505u}) {
        master.postMessage(base + n, 1, 1);
    }
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(QelMessageManagerTest, CommandsOfOneThreadKeepTheirOrder) {
    Calls expected;
    for (int i = 0; i < 200; ++i) {
        proxy.postSetDisplayHeight(i);
        proxy.postLoadProgram(std::to_string(i));
        proxy.postPlayMidi(i % 2 == 0 ? timed : untimed);
        expected.push_back("setDisplayHeight(" + std::to_string(i) + ")");
        expected.push_back("loadProgram(\"" + std::to_string(i) + "\")");
        expected.push_back("playMidi(" + TestSupport::textOf(i % 2 == 0 ? timed : untimed) + ")");
    }
    EXPECT_EQ(takeCalls(), expected);
}

TEST_F(QelMessageManagerTest, AMessageArrivesAsItWasAndTravelsPackedWhereItCan) {
    RandomCases cases;
    auto& random = cases.generator();
    const auto any = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    const auto byte = [&] { return static_cast<std::int8_t>(any(-128, 127)); };
    for (int round = 0; round < 3000; ++round) {
        const Cell cell{any(0, 1) * any(-1, 17), any(0, 1) * any(-1, 17)};
        const bool fromControl = cell.x >= 0 && cell.x <= 15 && cell.y >= 0 && cell.y <= 15;
        const bool withCell = any(0, 1) == 1;
        QelMidiMessage message(static_cast<MessageType>(any(0x80, 0xFF)), byte(), byte(), byte(), byte(), byte(),
                               byte(), noTicks);
        if (withCell) {
            message = QelMidiMessage(message.getMidiMessage(), byte(), byte(), byte(), cell);
        }
        message.setDefaultChannel(any(0, 1) == 1);
        message.setPpq(Ticks{any(0, 3) == 0 ? any(0, 1'000'000) : any(-3, -1)});
        message.setHostTime(any(0, 3) == 0 ? any(0, 1'000'000) : -1);
        const bool copied = (withCell && fromControl) || message.isTimedEvent() || message.getHostTime() >= 0;
        const bool incoming = any(0, 1) == 1;

        incoming ? proxy.postProcessMidiInputEvent(message) : proxy.postPlayMidi(message);

        const QelMidiMessage arrived =
            copied ? message : QelMidiMessage(message.getWparam(), message.getLparam()); // a cell beyond the grid goes
        EXPECT_EQ(takeCalls(),
                  Calls{(incoming ? "processMidiInputEvent(" : "playMidi(") + TestSupport::textOf(arrived) + ")"});
        EXPECT_EQ(takeIds(), std::vector<int>{incoming ? (copied ? 484 : 483) : (copied ? 479 : 480)});
        ASSERT_FALSE(HasFailure()) << TestSupport::textOf(message);
    }
}

TEST_F(QelMessageManagerTest, EngineCommandsAndHostTimesSurvive) {
    QelMidiMessage stamped = untimed;
    stamped.setHostTime(0);
    proxy.postPlayMidi(QelMidiMessage::createQelReset());
    proxy.postPlayMidi(QelMidiMessage::createQelHardReset());
    proxy.postPlayMidi(stamped);
    EXPECT_EQ(takeCalls(),
              (Calls{"playMidi(soft reset)", "playMidi(hard reset)", "playMidi(176 7 100 3 2 1 0 -1 -1 -1 0)"}));
}

TEST_F(QelMessageManagerTest, TheGuiThatIsCreatedComesBackAndIsNotRemembered) {
    static int place = 0;
    const auto gui = reinterpret_cast<Gui::QelGuiIF*>(&place);
    qel.createdGui = gui;
    EXPECT_EQ(proxy.sendCreateQelGui(false), gui);
    qel.createdGui = nullptr;
    EXPECT_EQ(proxy.sendCreateQelGui(false), nullptr);
}

TEST_F(QelMessageManagerTest, KeysReachTheBackendAtOnceOnTheCallersThread) {
    proxy.postKeyDown(Key(65), true);
    proxy.postKeyUp(Key(66));
    EXPECT_EQ(qel.takeCalls(), (Calls{"keyDown(A, true)", "keyUp(B)"}));
    EXPECT_EQ(qel.lastThread(), Platform::currentThreadId());
}

TEST_F(QelMessageManagerTest, ASendComesBackWhenTheBackendHasDoneIt) {
    const std::function<void()> sends[] = {[&] { proxy.sendInitialize(); },
                                           [&] { proxy.sendSetMidiInputPorts({}); },
                                           [&] { proxy.sendSetMidiOutputPorts({}); },
                                           [&] { proxy.sendEndInitialize(); },
                                           [&] { EXPECT_EQ(proxy.sendCreateQelGui(false), nullptr); },
                                           [&] { proxy.sendEnd(); }};
    for (int round = 0; round < 100; ++round) {
        for (const auto& send : sends) {
            send();
            ASSERT_EQ(qel.takeCalls().size(), 1u);
        }
    }
}

TEST(QelMessageManagerStopped, TakesNothingAndKeepsNobodyWaiting) {
    TestSupport::RecordingQel qel;
    MessageManagerMaster master("stopped");
    QelMessageManager proxy(qel, master);
    master.addMessageManager(proxy);
    master.start();
    static int place = 0;
    qel.createdGui = reinterpret_cast<Gui::QelGuiIF*>(&place);
    EXPECT_EQ(proxy.sendCreateQelGui(false), qel.createdGui);
    master.stop();
    static_cast<void>(qel.takeCalls());
    for (const Row& row : commands()) {
        row.call(proxy);
    }
    Barrier barrier;
    EXPECT_FALSE(proxy.postBarrier(barrier));
    EXPECT_EQ(qel.takeCalls(), Calls{});
}

} // namespace
} // namespace Backend
