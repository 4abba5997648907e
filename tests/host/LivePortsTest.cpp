// Places of ports, and which of them are wanted.
#include "host/live/PortLists.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <map>

namespace Host {
namespace {

using Names = std::vector<std::string>;

Names namesIn(const PortRoster& roster, bool PortRoster::Port::*flag) {
    Names names;
    for (const PortRoster::Port& port : roster.ports()) {
        if (port.*flag) {
            names.push_back(port.name);
        }
    }
    return names;
}

TEST(PortRoster, APortKeepsItsPlaceWhateverComesAndGoes) {
    RandomCases cases;
    auto& random = cases.generator();
    PortRoster roster;
    std::map<int, std::string> places;
    for (int step = 0; step < 500; ++step) {
        Names there;
        for (const char* name : {"A", "B", "B", "C", "D"}) { // two of equal name
            if (random() % 2 == 0) {
                there.emplace_back(name);
            }
        }
        std::shuffle(there.begin(), there.end(), random);
        static_cast<void>(roster.update(there));
        for (int place = 0; roster.has(place); ++place) {
            const auto [known, isNew] = places.emplace(place, roster.at(place).name);
            ASSERT_EQ(known->second, roster.at(place).name);
        }
        Names present = namesIn(roster, &PortRoster::Port::present);
        std::sort(present.begin(), present.end());
        std::sort(there.begin(), there.end());
        ASSERT_EQ(present, there);
    }
    EXPECT_LE(places.size(), 5u);
}

TEST(PortRoster, SaysWhatVanishedAndWhatAppeared) {
    PortRoster roster;
    EXPECT_EQ(roster.update({"A", "B"}).appeared, (std::vector<int>{0, 1}));
    roster.at(0).wanted = true;
    const auto gone = roster.update({"B"});
    EXPECT_EQ(gone.vanished, std::vector<int>{0});
    EXPECT_TRUE(gone.appeared.empty());
    EXPECT_EQ(roster.update({"C", "A", "B"}).appeared, (std::vector<int>{2, 0}));
    EXPECT_TRUE(roster.at(0).wanted) << "what comes back is wanted as before";
    EXPECT_FALSE(roster.update({"C", "A", "B"}).any());
}

TEST(PortRoster, HoldsNoMoreThanItsPlaces) {
    Names many;
    for (int i = 0; i < 200; ++i) {
        many.push_back(std::to_string(i));
    }
    PortRoster roster;
    EXPECT_EQ(roster.update(many).appeared.size(), 128u);
    EXPECT_FALSE(roster.has(128));
}

struct ArrangementCase {
    const char* name;
    PortWishes wishes;
    const char* ownPort;
    bool opensDevices;
    Names inputs; // in order
    Names outputs;
    Names wantedInputs;
    Names wantedOutputs;
};

PortWishes wish(Names inputs, Names outputs) {
    PortWishes wishes;
    wishes.inputs = std::move(inputs);
    wishes.outputs = std::move(outputs);
    return wishes;
}

PortWishes onlyList() {
    PortWishes wishes;
    wishes.onlyList = true;
    return wishes;
}

TEST(PortArrangement, PutsWhatWasNamedFirstAndWantsIt) {
    const ArrangementCase cases[] = {
        {"JACK",
         {},
         "Tembrel",
         false,
         {"Tembrel", "Keys", "Pads"},
         {"Tembrel", "Synth", "Box"},
         {"Tembrel"},
         {"Tembrel"}},
        {"ALSA",
         {},
         "Tembrel",
         true,
         {"Tembrel", "Keys", "Pads"},
         {"Tembrel", "Synth", "Box"},
         {"Tembrel", "Keys", "Pads"},
         {"Tembrel"}},
        {"WinMM", {}, "", true, {"Keys", "Pads"}, {"Synth", "Box"}, {"Keys", "Pads"}, {"Synth"}},
        {"named, other case",
         wish({"PADS"}, {"ox"}),
         "Tembrel",
         true,
         {"Pads", "Tembrel", "Keys"},
         {"Box", "Tembrel", "Synth"},
         {"Pads", "Tembrel"},
         {"Box", "Tembrel"}},
        {"order of naming",
         wish({"Pads", "Keys"}, {}),
         "Tembrel",
         false,
         {"Pads", "Keys", "Tembrel"},
         {"Tembrel", "Synth", "Box"},
         {"Pads", "Keys", "Tembrel"},
         {"Tembrel"}},
        {"only to list", onlyList(), "", true, {"Keys", "Pads"}, {"Synth", "Box"}, {}, {}},
    };
    for (const ArrangementCase& one : cases) {
        SCOPED_TRACE(one.name);
        Names inputs{"Keys", "Pads"};
        Names outputs{"Synth", "Box"};
        if (*one.ownPort != '\0') {
            inputs.insert(inputs.begin(), one.ownPort);
            outputs.insert(outputs.begin(), one.ownPort);
        }
        PortRoster in;
        PortRoster out;
        ASSERT_TRUE((PortArrangement{one.wishes, one.ownPort, one.opensDevices}.arrange(in, inputs, out, outputs)));
        EXPECT_EQ(namesIn(in, &PortRoster::Port::present), one.inputs);
        EXPECT_EQ(namesIn(out, &PortRoster::Port::present), one.outputs);
        EXPECT_EQ(namesIn(in, &PortRoster::Port::wanted), one.wantedInputs);
        EXPECT_EQ(namesIn(out, &PortRoster::Port::wanted), one.wantedOutputs);
    }
}

TEST(PortArrangement, AWishThatNoPortAnswersToIsAFault) {
    PortRoster in;
    PortRoster out;
    const PortWishes wishes = wish({}, {"nonsense"});
    const auto arranged = PortArrangement{wishes, "Tembrel", true}.arrange(in, {"Tembrel"}, out, {"Tembrel", "Synth"});
    ASSERT_FALSE(arranged);
    EXPECT_NE(arranged.fault().text().find("output named \"nonsense\""), std::string::npos);
}

TEST(PortArrangement, WhatComesLaterIsWantedByTheSameWishes) {
    PortRoster in;
    PortRoster out;
    const PortWishes wishes = wish({"keys"}, {});
    const PortArrangement arrangement{wishes, "Tembrel", true};
    ASSERT_TRUE(arrangement.arrange(in, {"Tembrel", "Keys 1"}, out, {"Tembrel"}));
    EXPECT_TRUE(arrangement.update(in, {"Tembrel", "Pads", "Keys 2"}, out, {"Tembrel"}));
    EXPECT_EQ(namesIn(in, &PortRoster::Port::wanted), (Names{"Keys 1", "Tembrel", "Keys 2"}));
    EXPECT_FALSE(arrangement.update(in, {"Keys 2", "Pads", "Tembrel"}, out, {"Tembrel"}));
}

// A port is open as long as it is there and wanted, if it can be opened.
TEST(PortLists, WhatIsThereAndWantedIsSettled) {
    const PortWishes wishes = wish({}, {"box", "bad"});
    PortLists lists(wishes, "ALSA", "", true);
    ASSERT_TRUE(lists.arrange({}, {"Box", "Synth", "Box", "Bad"}));
    std::map<int, std::string> open;
    const auto settle = [&] {
        return lists.settle(PortDirection::out, [&](int place, const std::string& name, bool isToBeOpen) {
            isToBeOpen&& name != "Bad" ? open.insert_or_assign(place, name).second : open.erase(place) != 0;
            return open.count(place) != 0;
        });
    };
    EXPECT_TRUE(settle());
    EXPECT_EQ(open, (std::map<int, std::string>{{0, "Box"}, {1, "Box"}}));
    EXPECT_EQ(lists.repetition(PortDirection::out, 1), 1) << "the second of two of one name";
    EXPECT_FALSE(settle());
    EXPECT_TRUE(lists.outputs().at(1).enabled);
    EXPECT_FALSE(lists.outputs().at(2).enabled) << "is wanted, cannot be opened";

    EXPECT_TRUE(lists.enable(PortDirection::out, 3, true));
    EXPECT_FALSE(lists.enable(PortDirection::out, 4, true));
    EXPECT_TRUE(lists.update({}, {"Box", "Synth", "Bad"}));
    EXPECT_TRUE(settle());
    EXPECT_EQ(open, (std::map<int, std::string>{{0, "Box"}, {3, "Synth"}}));
    EXPECT_FALSE(lists.outputs().at(1).present);
    EXPECT_TRUE(lists.inputs().empty());
}

} // namespace
} // namespace Host
