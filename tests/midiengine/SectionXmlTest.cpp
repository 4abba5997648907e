// The sections "Layers" and "Zones" of program files.
#include "midiengine/LayerXml.h"
#include "midiengine/ZoneXml.h"
#include "support/ParsedXml.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using Backend::Layers::Layer;
using Backend::Layers::LayerList;
using Backend::Zones::ZoneMap;
using TestSupport::parsed;

LayerList readLayers(const std::string& text, LayerList layers = Backend::Layers::defaultLayers()) {
    Backend::Layers::readLayers(parsed(text), layers);
    return layers;
}
std::string written(const LayerList& layers) {
    std::ostringstream out;
    XmlWriter xml(out);
    writeLayers(xml, layers);
    return out.str();
}
ZoneMap readZones(const std::string& text, ZoneMap zones = {}) {
    Backend::Zones::readZones(parsed(text), zones);
    return zones;
}
std::string written(const ZoneMap& zones) {
    std::ostringstream out;
    XmlWriter xml(out);
    writeZones(xml, zones);
    return out.str();
}

TEST(LayerXmlTest, TheDefaultSection) {
    EXPECT_EQ(written(Backend::Layers::defaultLayers()),
              "<Layers merge=\"false\">\n"
              "\t<Layer mute=\"false\" mono=\"false\" toggle=\"off\" useNoteStack=\"true\" minNote=\"C-1\" "
              "maxNote=\"G9\" minVelocity=\"0\" maxVelocity=\"127\" zone=\"-1\" output=\"-1\" channel=\"0\" "
              "transpose=\"\" key=\"\" velocity=\"\" compress=\"1_1\"/>\n"
              "</Layers>\n");
    EXPECT_EQ(readLayers("<Layers><Layer/></Layers>"), Backend::Layers::defaultLayers());
}

TEST(LayerXmlTest, ReadsEachAttribute) {
    const Layer layer = readLayers(R"(<Layers><Layer mute="true" mono="true" toggle="Type2" useNoteStack="false"
        minNote="C#4" maxNote="C5" minVelocity="1" maxVelocity="126" zone="3" output="2" channel="15" transpose="-5"
        key="F#" velocity="64" compress="3_4"/></Layers>)")
                            .at(0);
    Layer expected;
    expected.mute = expected.mono = true;
    expected.toggle = NoteToggle(NoteToggle::State::type2);
    expected.useNoteStack = false;
    expected.minNote = Note(61);
    expected.maxNote = Note(72);
    expected.minVelocity = 1;
    expected.maxVelocity = 126;
    expected.zone = 3;
    expected.output = 2;
    expected.channel = 15;
    expected.transpose = RelativeFixedValue::relative(-5);
    expected.key = Note(6);
    expected.velocity = RelativeFixedValue::fixed(64);
    expected.compress = Fraction(3, 4);
    EXPECT_EQ(layer, expected);
}

TEST(LayerXmlTest, MergeAppendsElseTheSectionReplaces) {
    const LayerList two = readLayers(R"(<Layers><Layer channel="1"/><Other/><Layer channel="2"/></Layers>)");
    ASSERT_EQ(two.size(), 2U);
    const LayerList three = readLayers(R"(<Layers merge="true"><Layer channel="3"/></Layers>)", two);
    ASSERT_EQ(three.size(), 3U);
    for (std::size_t i = 0; i < three.size(); ++i) {
        EXPECT_EQ(three[i].index, static_cast<int>(i));
        EXPECT_EQ(three[i].channel, static_cast<int>(i) + 1);
    }
    EXPECT_TRUE(readLayers("<Layers/>", three).empty());
    std::string many = "<Layers>";
    for (int i = 0; i < 1100; ++i) {
        many += "<Layer/>";
    }
    EXPECT_EQ(readLayers(many + "</Layers>").size(), Backend::Layers::maxLayers);
}

TEST(LayerXmlTest, AbsurdValuesHarmNobody) {
    for (const char* attributes :
         {R"(minNote="H2" maxNote="" channel="" zone="x" compress="1_0" key="?" toggle="type3" mute="yes")",
          R"(channel="99999999999" zone="-99999" output="4000000000" minVelocity="-1" maxVelocity="1000")",
          R"(transpose="+99999999999" velocity="-2147483648" compress="2147483647_1" key="C")",
          R"(transpose="2147483647" velocity="2147483647" compress="-5_-2147483648")"}) {
        const LayerList layers = readLayers("<Layers><Layer " + std::string(attributes) + "/></Layers>");
        ASSERT_EQ(layers.size(), 1U);
        for (int data = 0; data < 128; ++data) {
            EXPECT_GE(layers[0].transform(static_cast<std::int8_t>(data)), 0) << attributes;
            EXPECT_GE(layers[0].transformVelocity(static_cast<std::int8_t>(data)), 0) << attributes;
        }
        EXPECT_EQ(written(readLayers(written(layers))), written(layers)) << attributes;
    }
    const Layer unreadable = readLayers(R"(<Layers><Layer minNote="H2" maxNote="" channel="" zone="x" compress="1_0"
        key="?" toggle="type3" mute="yes" output="-"/></Layers>)")
                                 .at(0);
    EXPECT_EQ(unreadable, Layer{});
}

TEST(LayerXmlTest, ArpeggioAndSequence) {
    const LayerList layers = readLayers(R"(<Layers>
        <Layer><Arpeggio><UpArpeggio beat="240" length="120"/></Arpeggio><SequenceSetting preset="A &amp; B"/></Layer>
        <Layer><DownArpeggio/><SequenceSetting preset="C" useNote="false" useVelocity="false" useLength="false"/></Layer>
        <Layer><Arpeggio><SideArpeggio/><UpDownArpeggio beat="0" length="-7"/></Arpeggio></Layer>
        <Layer><Arpeggio><SideArpeggio/></Arpeggio><SequenceSetting useNote="false"/></Layer></Layers>)");
    using Backend::ArpeggioManagement::ArpeggioKind;
    using Backend::ArpeggioManagement::ArpeggioSetting;
    EXPECT_EQ(layers[0].arpeggio, (ArpeggioSetting{ArpeggioKind::up, 240, 120}));
    EXPECT_EQ(layers[1].arpeggio, (ArpeggioSetting{ArpeggioKind::down, 480, 480}));
    EXPECT_EQ(layers[2].arpeggio, (ArpeggioSetting{ArpeggioKind::upDown, 1, 1}));
    EXPECT_FALSE(layers[3].arpeggio || layers[3].sequence);
    EXPECT_EQ(layers[0].sequence->preset, "A & B");
    EXPECT_TRUE(layers[0].sequence->useNote && layers[0].sequence->useVelocity && layers[0].sequence->useLength);
    EXPECT_FALSE(layers[1].sequence->useNote || layers[1].sequence->useVelocity || layers[1].sequence->useLength);
    const std::string text = written({layers[0]});
    EXPECT_NE(text.find("compress=\"1_1\">\n\t\t<Arpeggio>\n\t\t\t<UpArpeggio beat=\"240\" length=\"120\"/>\n"
                        "\t\t</Arpeggio>\n\t\t<SequenceSetting preset=\"A &amp; B\" useNote=\"true\" "
                        "useVelocity=\"true\" useLength=\"true\"/>\n\t</Layer>\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(layers[0].summary({}), "L:1  Ch:1  Up Arp 1/8 Len:1/16");
    EXPECT_EQ(layers[2].summary({}), "L:3  Ch:1  Up + Down Arp 1 Len:1");
    std::vector<Platform::Fault> faults;
    checkElement(parsed(text), Backend::Layers::layersFormat(), "test", faults);
    EXPECT_TRUE(faults.empty()) << faults.front().text();
    checkElement(parsed("<Layers><Layer><Arpeggio><SideArpeggio/></Arpeggio><UpArpeggio beat=\"x\"/></Layer></Layers>"),
                 Backend::Layers::layersFormat(), "test", faults);
    EXPECT_EQ(faults.size(), 2U);
}

TEST(ZoneXmlTest, TheLowestZoneIsSelectedAndALaterElementWins) {
    const ZoneMap zones = readZones(R"(<Zones><Zone id="3" transpose="5"/><Zone id="1" transpose="-7"/><Layer id="0"/>
                                       <Zone id="3" transpose="12"/></Zones>)");
    EXPECT_EQ(zones.size(), 2);
    ASSERT_NE(zones.selected(), nullptr);
    EXPECT_EQ(zones.selected()->id, 1);
    EXPECT_EQ(zones.selected()->transpose, -7);
    EXPECT_EQ(zones.find(3)->transpose, 12);
    EXPECT_FALSE(zones.find(3)->selected);
    EXPECT_EQ(written(zones), "<Zones merge=\"false\">\n\t<Zone id=\"1\" transpose=\"-7\"/>\n"
                              "\t<Zone id=\"3\" transpose=\"12\"/>\n</Zones>\n");
}

TEST(ZoneXmlTest, MergeKeepsWhatTheSectionDoesNotName) {
    ZoneMap zones = readZones(R"(<Zones><Zone id="1" transpose="1"/><Zone id="2" transpose="2"/></Zones>)");
    zones.find(1)->selected = false;
    zones.find(2)->selected = true;
    zones = readZones(R"(<Zones merge="true"><Zone id="2" transpose="20"/><Zone id="0"/></Zones>)", zones);
    EXPECT_EQ(zones.size(), 3);
    EXPECT_EQ(zones.find(1)->transpose, 1);
    EXPECT_EQ(zones.find(2)->transpose, 20);
    EXPECT_EQ(zones.selected()->id, 0);
    EXPECT_FALSE(zones.find(2)->selected);
    EXPECT_TRUE(readZones("<Zones/>", zones).isEmpty());
}

TEST(ZoneXmlTest, AbsurdValuesHarmNobody) {
    const ZoneMap zones =
        readZones(R"(<Zones><Zone/><Zone id="128"/><Zone id="-1"/><Zone id="x"/><Zone id="99999999999"/>
        <Zone id="5" transpose="1000"/><Zone id="6" transpose="-1000"/><Zone id="7" transpose="y"/></Zones>)");
    EXPECT_EQ(zones.size(), 3);
    EXPECT_EQ(zones.find(5)->transpose, 127);
    EXPECT_EQ(zones.find(6)->transpose, -127);
    EXPECT_EQ(zones.find(7)->transpose, 0);
}

TEST(SectionXmlTest, WhatIsWrittenIsReadBack) {
    RandomCases random;
    for (int round = 0; round < 200; ++round) {
        LayerList layers(random.number<std::size_t>(0, 4));
        for (std::size_t i = 0; i < layers.size(); ++i) {
            const auto small = [&](int lowest, int highest) { return random.number<std::int8_t>(lowest, highest); };
            Layer& layer = layers[i];
            layer.index = static_cast<std::int32_t>(i);
            layer.mute = random.number(0, 1) != 0;
            layer.mono = random.number(0, 1) != 0;
            layer.useNoteStack = random.number(0, 1) != 0;
            layer.toggle = NoteToggle(static_cast<NoteToggle::State>(random.number(0, 2)));
            layer.minNote = Note(random.number(0, 127));
            layer.maxNote = Note(random.number(0, 127));
            layer.minVelocity = small(0, 127);
            layer.maxVelocity = small(0, 127);
            layer.zone = small(-1, 127);
            layer.output = small(-1, 127);
            layer.channel = small(0, 15);
            layer.transpose = random.number(0, 1) != 0 ? RelativeFixedValue::relative(random.number(-127, 127))
                                                       : RelativeFixedValue::fixed(random.number(0, 127));
            layer.key = Note(random.number(-1, 11));
            layer.velocity = RelativeFixedValue::relative(random.number(-127, 127));
            layer.compress = Fraction(random.number(-9, 9), random.number(1, 9));
            if (random.number(0, 1) != 0) {
                layer.arpeggio = {static_cast<Backend::ArpeggioManagement::ArpeggioKind>(random.number(0, 3)),
                                  random.number(1, 3840), random.number(1, 3840)};
            }
            if (random.number(0, 1) != 0) {
                layer.sequence = {"Name <" + std::to_string(random.number(0, 99)) + ">", random.number(0, 1) != 0,
                                  random.number(0, 1) != 0, random.number(0, 1) != 0, nullptr};
            }
        }
        ASSERT_EQ(readLayers(written(layers)), layers) << written(layers);
        ZoneMap zones;
        for (int count = random.number(0, 5); count > 0; --count) {
            zones.set({random.number<std::int8_t>(0, 127), random.number<std::int8_t>(-127, 127), {}, {}, false});
        }
        zones.selectLowest();
        ASSERT_EQ(readZones(written(zones)), zones) << written(zones);
    }
}

} // namespace
