// Banks as others write them: what is changed in them, and that nothing else is.
#include "backend/BankText.h"

#include "support/RandomCases.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Backend::BankText;
using Platform::Result;
using testing::HasSubstr;

constexpr const char* newProgram = "<Program name=\"N\">\n</Program>\n";

std::string replaced(const std::string& bank, std::size_t slot) {
    const Result<BankText> text = BankText::of(bank, "b.bnk");
    if (!text) {
        return text.fault().text();
    }
    const Result<BankText> changed = text.value().withProgram(slot, newProgram);
    return changed ? changed.value().text() : changed.fault().text();
}

std::string resized(const std::string& bank, std::size_t size) {
    const Result<BankText> text = BankText::of(bank, "b.bnk");
    const Result<BankText> changed = text ? text.value().withSize(size) : text;
    return changed ? changed.value().text() : changed.fault().text();
}

// What a change says of its slots is what is there to be read.
void expectToBeAsRead(const Result<BankText>& changed) {
    ASSERT_TRUE(changed) << changed.fault().text();
    const BankText& bank = changed.value();
    const Result<BankText> read = BankText::of(bank.text(), "b.bnk");
    ASSERT_TRUE(read) << read.fault().text() << bank.text();
    ASSERT_EQ(read.value().size(), bank.size()) << bank.text();
    for (std::size_t slot = 0; slot < bank.size(); ++slot) {
        EXPECT_EQ(read.value().program(slot), bank.program(slot)) << bank.text();
        EXPECT_EQ(read.value().programName(slot), bank.programName(slot)) << bank.text();
    }
    const Result<BankText> one = bank.withSize(1);
    const Result<BankText> oneRead = read.value().withSize(1);
    ASSERT_TRUE(one && oneRead);
    EXPECT_EQ(one.value().text(), oneRead.value().text());
}

TEST(BankText, OneProgramIsExchanged) {
    struct Row {
        const char* name;
        const char* bank;
        std::size_t slot;
        const char* result;
    };
    for (const Row& row : {
             Row{"our own layout", "<Bank>\n<Program name=\"a\">\n\t<Layers/>\n</Program>\n<Program/>\n</Bank>\n", 0,
                 "<Bank>\n<Program name=\"N\">\n</Program>\n<Program/>\n</Bank>\n"},
             Row{"indented, the last one", "<Bank>\n  <Program/>\n    <Program/>  \n  </Bank>", 1,
                 "<Bank>\n  <Program/>\n<Program name=\"N\">\n</Program>\n  </Bank>"},
             Row{"all in a line", "<Bank><Program/><Program/><Program/></Bank>", 1,
                 "<Bank><Program/>\n<Program name=\"N\">\n</Program>\n<Program/></Bank>"},
             Row{"CRLF", "<Bank>\r\n\t<Program>\r\n\t</Program>\r\n</Bank>\r\n", 0,
                 "<Bank>\r\n<Program name=\"N\">\r\n</Program>\r\n</Bank>\r\n"},
             Row{"a start tag over lines",
                 "<Bank>\n<Program\n name=\"a > b\"\n\ttempo='3'\n>\n</Program\n>\n<Program/>\n</Bank>", 0,
                 "<Bank>\n<Program name=\"N\">\n</Program>\n<Program/>\n</Bank>"},
             Row{"a comment with a program",
                 "<Bank>\n<!-- <Program> -->\n<Program/>\n<!--\n<Program/>\n</Bank>\n-->\n<Program/>\n</Bank>", 1,
                 "<Bank>\n<!-- <Program> -->\n<Program/>\n<!--\n<Program/>\n</Bank>\n-->\n<Program "
                 "name=\"N\">\n</Program>\n</Bank>"},
             Row{"CDATA with a program",
                 "<Bank>\n<Program>\n<X><![CDATA[\n<Program/>\n</Program>]]></X>\n</Program>\n<Program/>\n</Bank>", 0,
                 "<Bank>\n<Program name=\"N\">\n</Program>\n<Program/>\n</Bank>"},
             Row{"CDATA between programs", "<Bank>\n<![CDATA[<Program>\n]]><Program/>\n<Program/></Bank>", 0,
                 "<Bank>\n<![CDATA[<Program>\n]]>\n<Program name=\"N\">\n</Program>\n<Program/></Bank>"},
             Row{"programs within programs",
                 "<Bank>\n<Program><Program/></Program>\n<Other><Program/></Other>\n<Program/>\n</Bank>", 1,
                 "<Bank>\n<Program><Program/></Program>\n<Other><Program/></Other>\n<Program "
                 "name=\"N\">\n</Program>\n</Bank>"},
             Row{"names that begin like it", "<Bank>\n<Programs/>\n<ProgramX a=\"<\" />\n</Bank>", 0,
                 "b.bnk:3: \"<\" in an attribute"},
             Row{"other names only", "<Bank>\n<Programs/>\n</Bank>", 0, "b.bnk:1: there is no <Program>"},
             Row{"other elements", "<Bank>\n<Programs/>\n<Program/>\n</Bank>", 0,
                 "<Bank>\n<Programs/>\n<Program name=\"N\">\n</Program>\n</Bank>"},
             Row{"quotes and an instruction",
                 "<?xml version=\"1.0\"?>\n<?x <Program> ?>\n<Bank>\n<Program name='\">'/>\n</Bank>", 0,
                 "<?xml version=\"1.0\"?>\n<?x <Program> ?>\n<Bank>\n<Program name=\"N\">\n</Program>\n</Bank>"},
             Row{"no such slot", "<Bank>\n<Program/>\n</Bank>", 1,
                 "b.bnk: there is no slot 1, the bank has 1 programs"},
             Row{"another root", "<ProgramFile>\n<Program/>\n</ProgramFile>", 0,
                 "b.bnk:1: the root element is <ProgramFile>, not <Bank>"},
             Row{"not well-formed", "<Bank>\n<Program>\n</Bank>", 0, "b.bnk:3: an end tag without its start tag"},
         }) {
        EXPECT_EQ(replaced(row.bank, row.slot), row.result) << row.name;
    }
}

TEST(BankText, AProgramThatWouldHarmOthersIsRefused) {
    const Result<BankText> bank = BankText::of("<Bank>\n<Program/>\n<Program/>\n</Bank>", "b.bnk");
    ASSERT_TRUE(bank);
    for (const char* program :
         {"<Program>\n", "<Program/><Program/>\n", "</Bank>\n", "<!--", "", "<Program a=\"\x01\"/>\n"}) {
        EXPECT_FALSE(bank.value().withProgram(0, program)) << program;
    }
}

TEST(BankText, GrowsAndShrinks) {
    struct Row {
        const char* name;
        const char* bank;
        std::size_t size;
        const char* result;
    };
    constexpr const char* five =
        "<Bank>\n<Program name=\"1\">\n</Program>\n<Program name=\"2\">\n\t<Zones/>\n</Program>\n"
        "<Program name=\"3\">\n</Program>\n<Program name=\"4\"/>\n<Program name=\"5\"/>\n</Bank>\n";
    for (const Row& row : {
             Row{"to the first two", five, 2,
                 "<Bank>\n<Program name=\"1\">\n</Program>\n<Program name=\"2\">\n\t<Zones/>\n</Program>\n</Bank>\n"},
             Row{"two to four", "<Bank>\n\t<Program/>\n\t<Program/>\n\t</Bank>\n", 4,
                 "<Bank>\n\t<Program/>\n\t<Program/>\n<Program name=\"Empty\">\n</Program>\n<Program "
                 "name=\"Empty\">\n</Program>\n"
                 "</Bank>\n"},
             Row{"CRLF", "<Bank>\r\n<Program/>\r\n</Bank>\r\n", 2,
                 "<Bank>\r\n<Program/>\r\n<Program name=\"Empty\">\r\n</Program>\r\n</Bank>\r\n"},
             Row{"in a line", "<Bank><Program/><Program/></Bank>", 1, "<Bank><Program/>\n</Bank>\n"},
             Row{"growing in a line", "<Bank><Program/></Bank><!-- kept -->", 2,
                 "<Bank><Program/>\n<Program name=\"Empty\">\n</Program>\n</Bank>\n<!-- kept -->"},
             Row{"comments that look like programs",
                 "<Bank>\n<!--<Program>-->\n<Program/>\n<!--</Bank>-->\n<Program/>\n</Bank>\n", 1,
                 "<Bank>\n<!--<Program>-->\n<Program/>\n<!--</Bank>-->\n</Bank>\n"},
         }) {
        EXPECT_EQ(resized(row.bank, row.size), row.result) << row.name;
    }
}

TEST(BankText, DoesNotGrowBeyondWhatIsRead) {
    for (const std::size_t size : {std::size_t{2'000'000}, std::size_t{0x7FFFFFFF}}) {
        EXPECT_EQ(resized("<Bank>\n<Program/>\n</Bank>\n", size),
                  "b.bnk: a bank of " + std::to_string(size) + " programs would be too big");
    }
}

// Whatever the bank looks like, all but the slot stays, and the slot is what was put in.
TEST(BankText, OtherProgramsStayByteForByte) {
    const auto pieces = std::to_array<const char*>({" ", "\n", "\r\n", "\t", "<!-- <Program> </Bank> -->",
                                                    "<![CDATA[<Program/></Bank>]]>", "<?p </Program> ?>", "text",
                                                    "<Other a='&lt;Program'><Program b=\">\"/></Other>"});
    RandomCases random;
    const auto any = [&](std::size_t count) { return random.number<std::size_t>(0, count - 1); };
    for (int round = 0; round < 300; ++round) {
        const auto filling = [&] {
            std::string text;
            for (std::size_t i = any(4); i > 0; --i) {
                text += pieces[any(pieces.size())];
            }
            return text;
        };
        const std::size_t size = 1 + any(5);
        std::string bank = "<Bank>";
        for (std::size_t i = 0; i < size; ++i) {
            bank += filling() + "<Program name=\"" + std::to_string(i) + "\"" + (any(2) == 0 ? "\n" : "") + ">" +
                    filling() + "</Program>";
        }
        bank += filling() + "</Bank>\n";
        const Result<BankText> before = BankText::of(bank, "b.bnk");
        ASSERT_TRUE(before) << bank << before.fault().text();
        ASSERT_EQ(before.value().size(), size) << bank;
        const std::size_t slot = any(size);
        const Result<BankText> after = before.value().withProgram(slot, newProgram);
        ASSERT_TRUE(after) << bank << after.fault().text();
        for (std::size_t i = 0; i < size; ++i) {
            EXPECT_THAT(std::string(after.value().program(i)),
                        i == slot ? HasSubstr("name=\"N\"")
                                  : testing::Matcher<std::string>(std::string(before.value().program(i))))
                << bank;
        }
        const Result<BankText> longer = after.value().withSize(size + 2);
        const Result<BankText> shorter = longer ? longer.value().withSize(slot + 1) : longer;
        for (const Result<BankText>* const changed : {&after, &longer, &shorter}) {
            expectToBeAsRead(*changed);
        }
        ASSERT_TRUE(shorter);
        EXPECT_EQ(shorter.value().program(slot), after.value().program(slot));
    }
}

} // namespace
