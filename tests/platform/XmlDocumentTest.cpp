#include "platform/XmlDocument.h"

#include "platform/SafeFiles.h"
#include "platform/XmlCheck.h"
#include "support/RandomCases.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <random>

using namespace Platform;

namespace {

// The tree on one line: name@line[attribute=value;...]"text"{children}.
std::string shown(const XmlElement& element) {
    std::string text = element.name + '@' + std::to_string(element.line);
    if (!element.attributes.empty()) {
        text += '[';
        for (const XmlAttribute& attribute : element.attributes) {
            text += attribute.name + '=' + attribute.value + ';';
        }
        text += ']';
    }
    text += element.text.empty() ? "" : '"' + element.text + '"';
    if (!element.children.empty()) {
        text += '{';
        for (const XmlElement& child : element.children) {
            text += shown(child) + ' ';
        }
        text.back() = '}';
    }
    return text;
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::string nested(int depth) {
    return repeated("<a>", depth) + repeated("</a>", depth);
}

struct Case {
    const char* name;
    std::string text;
    std::string outcome;
};

} // namespace

TEST(XmlDocument, ReadsWellFormedDocuments) {
    const Case cases[] = {
        {"least", "<a/>", "a@1"},
        {"declaration", "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a></a>", "a@2"},
        {"declaration in full", "<?xml version = '1.1'\n encoding='UTF-8' standalone='yes' ?><a/>\n", "a@2"},
        {"byte order mark", "\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>", "a@1"},
        {"attributes in order", "<a z='1' y=\"2\"\n  x = '3'/>", "a@1[z=1;y=2;x=3;]"},
        {"quotes in quotes", "<a b='\"' c=\"'\" d='>'/>", "a@1[b=\";c=';d=>;]"},
        {"entities", "<a b='&lt;&gt;&amp;&apos;&quot;'>&lt;&#65;&#x42;&#x1F3B9;&amp;amp;</a>",
         "a@1[b=<>&'\";]\"<AB\xF0\x9F\x8E\xB9&amp;\""},
        {"blanks in attributes", "<a b='1\t2\n3\r\n4\r5  6 '/>", "a@1[b=1 2 3 4 5  6 ;]"},
        {"blanks by reference", "<a b='&#9;&#10;&#13;'>&#13;&#10;</a>", "a@1[b=\t\n\r;]\"\r\n\""},
        {"line ends", "<a>\r\n<b/>\r<c/>\n\r\n<d\r\n/></a>", "a@1\"\n\n\n\n\"{b@2 c@3 d@5}"},
        {"text joined", "<a>x<b>y</b><![CDATA[<&>]]> z<!-- c --><?p i?>!</a>", "a@1\"x<&> z!\"{b@1\"y\"}"},
        {"white space kept", "<a> <b>  </b>\n</a>", "a@1\" \n\"{b@1\"  \"}"},
        {"CDATA with line ends and tags", "<a><![CDATA[\r\n<x>\n]]>\n<b/></a>", "a@1\"\n<x>\n\n\"{b@4}"},
        {"empty CDATA and brackets", "<a><![CDATA[]]><![CDATA[]]]]><![CDATA[>]]>] ]</a>", "a@1\"]]>] ]\""},
        {"comments with tags", "<!-- <x>\n --><a><!--<y a='>--><b/></a><!--\n-->", "a@2{b@2}"},
        {"instructions with tags", "<?php <x>\n?><a><?q?><b/></a><?r >?>\n", "a@2{b@2}"},
        {"names", "<_a.b-1 \xC3\xA4='x'><\xE9\x9F\xB3/></_a.b-1 >", "_a.b-1@1[\xC3\xA4=x;]{\xE9\x9F\xB3@1}"},
        {"text beyond ASCII", "<a b='\xC3\x9C'>\xF0\x9F\x8E\xB9\xEE\x80\x80\x7F</a>",
         "a@1[b=\xC3\x9C;]\"\xF0\x9F\x8E\xB9\xEE\x80\x80\x7F\""},
        {"a program",
         "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<ProgramFile>\n\t<Program name=\"A &amp; B\">\n\t</Program>\n"
         "</ProgramFile>\n",
         "ProgramFile@2\"\n\t\n\"{Program@3[name=A & B;]\"\n\t\"}"},
    };
    for (const Case& each : cases) {
        const auto result = parseXml(each.text, "x");
        EXPECT_EQ(result ? shown(result.value()) : result.fault().text(), each.outcome) << each.name;
    }
}

TEST(XmlDocument, RefusesEverythingElseWithTheLine) {
    const Case cases[] = {
        {"nothing", "", "x:1: no root"},
        {"blanks", "\n\n", "x:3: no root"},
        {"text", "hello", "x:1: text outside"},
        {"text before", "\nx<a/>", "x:2: text outside"},
        {"text behind", "<a/>\n\nx", "x:3: text outside"},
        {"reference outside", "<a/>&#32;", "x:1: text outside"},
        {"CDATA outside", "<a/><![CDATA[ ]]>", "x:1: "},
        {"two roots", "<a/>\n<b/>", "x:2: a second root"},
        {"not closed", "<a>\n<b>\n</b>\n", "x:4: the file ends"},
        {"wrong end", "<a>\n<b></a></b>", "x:2: an end tag"},
        {"end only", "</a>", "x:1: an end tag"},
        {"cut tag", "<a\n", "x:2: a tag without its end"},
        {"cut end tag", "<a></a", "x:1: a tag without its end"},
        {"cut attribute", "<a b='1\n", "x:2: an attribute without its closing"},
        {"cut behind quote", "<a b='", "x:1: an attribute without its closing"},
        {"cut comment", "<a><!-- ", "x:1: a comment"},
        {"cut CDATA", "<a><![CDATA[ ]]", "x:1: a CDATA"},
        {"cut instruction", "<a/><?p ", "x:1: a processing"},
        {"dashes in comment", "<a><!-- -- --></a>", "x:1: \"--\""},
        {"three dashes", "<!-- ---><a/>", "x:1: \"--\""},
        {"no value", "<a b/>", "x:1: an attribute without its value"},
        {"no quotes", "<a b=1/>", "x:1: an attribute whose"},
        {"no blank", "<a b='1'c='2'/>", "x:1: a character that does not belong"},
        {"twice", "<a b='1'\nb='2'/>", "x:2: an attribute that is there twice"},
        {"less in attribute", "<a b='<'/>", "x:1: \"<\""},
        {"less in text", "<a> < </a>", "x:1: a name"},
        {"end of CDATA in text", "<a>]]></a>", "x:1: \"]]>\""},
        {"unknown entity", "<a>\n&foo;</a>", "x:2: \"&\""},
        {"bare ampersand", "<a b='x & y'/>", "x:1: \"&\""},
        {"open entity", "<a>&lt</a>", "x:1: \"&\""},
        {"reference to nothing", "<a>&#;</a>", "x:1: a character reference"},
        {"reference with letters", "<a>&#1a;</a>", "x:1: a character reference"},
        {"capital X", "<a>&#X41;</a>", "x:1: a character reference"},
        {"reference to zero", "<a>&#0;</a>", "x:1: a reference to"},
        {"reference to a surrogate", "<a>&#xD800;</a>", "x:1: a reference to"},
        {"reference beyond", "<a>&#x110000;</a>", "x:1: a reference to"},
        {"reference far beyond", "<a>&#x100000041;</a>", "x:1: a reference to"},
        {"control character", "<a>\n\x01</a>", "x:2: a character"},
        {"control character in attribute", "<a b='\x1F'/>", "x:1: a character"},
        {"zero", std::string("<a>\0</a>", 8), "x:1: a character"},
        {"U+FFFE", "<a>\xEF\xBF\xBE</a>", "x:1: a character"},
        {"Latin 1", "<a>\n\xFC</a>", "x:2: is not UTF-8"},
        {"overlong", "<a>\xC0\xBC</a>", "x:1: is not UTF-8"},
        {"surrogate", "<a>\xED\xA0\x80</a>", "x:1: is not UTF-8"},
        {"cut character", "<a b='\xE9\x9F'/>", "x:1: is not UTF-8"},
        {"not UTF-8 in a comment", "<a/><!-- \xFF -->", "x:1: is not UTF-8"},
        {"not UTF-8 in a name", "<a\xFF/>", "x:1: is not UTF-8"},
        {"UTF-16", std::string("\xFF\xFE<\0a\0/\0>\0", 10), "x:1: is not UTF-8"},
        {"bad names", "<1a/>", "x:1: a name"},
        {"space before name", "< a/>", "x:1: a name"},
        {"prefix", "<a>\n<b:c/></a>", "x:2: names with a colon"},
        {"prefixed attribute", "<a xml:lang='x'/>", "x:1: names with a colon"},
        {"namespace", "<a xmlns='x'/>", "x:1: namespaces"},
        {"document type", "<!DOCTYPE a [<!ENTITY b 'c'>]>\n<a>&b;</a>", "x:1: document type"},
        {"document type inside", "<a><!DOCTYPE a></a>", "x:1: document type"},
        {"late declaration", "\n<?xml version=\"1.0\"?><a/>", "x:2: an XML declaration"},
        {"declaration without version", "<?xml encoding='utf-8'?><a/>", "x:1: an XML declaration"},
        {"version 2", "<?xml version='2.0'?><a/>", "x:1: an XML declaration"},
        {"other encoding", "<?xml version='1.0' encoding='iso-8859-1'?><a/>", "x:1: an encoding"},
        {"declaration not closed", "<?xml version='1.0'><a/>", "x:1: an XML declaration"},
        {"too deep", "\n" + nested(maxXmlDepth + 1), "x:2: elements nested"},
        {"far too deep", repeated("<a>", 1'000'000), "x:1: elements nested"},
    };
    for (const Case& each : cases) {
        const auto result = parseXml(each.text, "x");
        const std::string outcome = result ? shown(result.value()) : result.fault().text();
        EXPECT_EQ(outcome.substr(0, each.outcome.size()), each.outcome) << each.name << ": " << outcome;
    }
}

TEST(XmlDocument, KeepsItsBounds) {
    EXPECT_TRUE(parseXml(nested(maxXmlDepth), "x"));
    std::string attributes;
    for (std::size_t i = 0; i < maxXmlAttributes; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
    }
    const auto full = parseXml("<a" + attributes + "/>", "x");
    ASSERT_TRUE(full);
    EXPECT_EQ(full.value().attributes.size(), maxXmlAttributes);
    EXPECT_FALSE(parseXml("<a" + attributes + " b=''/>", "x"));
    constexpr int most = static_cast<int>(maxXmlParts) - 1; // and the root
    EXPECT_TRUE(checkXml("<a>" + repeated("<b/>", most) + "</a>", "x"));
    for (const char* const part : {"<b/>", "<!---->", "<?p?>", "<![CDATA[]]>"}) {
        const auto tooMany = checkXml("<a>\n\n" + repeated(part, most + 1) + "</a>", "x");
        ASSERT_FALSE(tooMany) << part;
        EXPECT_EQ(tooMany.fault().text(), "x:3: more than a million elements, attributes and the like") << part;
    }
    EXPECT_FALSE(checkXml("<a>" + repeated("<b c='' d='' e=''/>", (most + 1) / 4) + "</a>", "x"));
    const auto tooBig = parseXml("<a>" + std::string(maxXmlBytes, ' ') + "</a>", "x");
    ASSERT_FALSE(tooBig);
    EXPECT_EQ(tooBig.fault().line, 0);
}

TEST(XmlDocument, LooksUpByName) {
    const auto result = parseXml("<a x='1' y='2'><b i='1'/><c/><b i='2'/></a>", "x");
    ASSERT_TRUE(result);
    const XmlElement& root = result.value();
    ASSERT_NE(root.attribute("y"), nullptr);
    EXPECT_EQ(*root.attribute("y"), "2");
    EXPECT_EQ(root.attribute("Y"), nullptr);
    ASSERT_NE(root.child("b"), nullptr);
    EXPECT_EQ(*root.child("b")->attribute("i"), "1");
    EXPECT_EQ(root.child("d"), nullptr);
}

TEST(XmlDocument, IsReadFromFiles) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.prg";
    ASSERT_TRUE(replaceFile(file, "<a>\n&foo;</a>"));
    const auto bad = readXmlFile(file);
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.fault().line, 2);
    EXPECT_NE(bad.fault().file.find("a.prg"), std::string::npos);
    ASSERT_TRUE(replaceFile(file, "<a b='1'/>"));
    EXPECT_TRUE(readXmlFile(file));
    EXPECT_FALSE(readXmlFile(folder.path() / "missing"));
}

namespace {

// Writes a random document and keeps the tree that it must give.
class RandomDocument final {
public:
    explicit RandomDocument(std::mt19937& random) : random_(random) { tree = element(0); }
    XmlElement tree;
    std::string text;

private:
    unsigned below(unsigned limit) { return random_() % limit; }
    void blank() {
        const char* const kind = below(2) == 0 ? " " : "\r\n";
        text += kind;
        line_ += *kind == '\r' ? 1 : 0;
    }
    // A character's two faces: in the document, and read.
    void character(std::string& read, bool inAttribute) {
        static const char* const faces[][2] = {{"&amp;", "&"}, {"&#x27;", "'"}, {"&quot;", "\""},
                                               {"&lt;", "<"},  {"&#10;", "\n"}, {"\xC3\xA4", "\xC3\xA4"},
                                               {">", ">"},     {" ", " "},      {"&#127929;", "\xF0\x9F\x8E\xB9"},
                                               {"a", "a"},     {"\r\n", "\n"}};
        const auto& face = faces[below(11)];
        text += face[0];
        const bool isLineEnd = face[0][0] == '\r';
        line_ += isLineEnd ? 1 : 0;
        read += isLineEnd && inAttribute ? " " : face[1];
    }
    XmlElement element(int depth) {
        XmlElement made;
        made.name = std::string(1 + below(3), static_cast<char>('a' + below(26)));
        made.line = line_;
        text += '<' + made.name;
        for (unsigned i = below(4); i > 0; --i) {
            blank();
            XmlAttribute attribute{"n" + std::to_string(i), ""};
            text += attribute.name + "=\"";
            for (unsigned length = below(5); length > 0; --length) {
                character(attribute.value, true);
            }
            text += '"';
            made.attributes.push_back(attribute);
        }
        text += '>';
        for (unsigned parts = below(6); parts > 0; --parts) {
            switch (below(5)) {
            case 0:
                text += "<!-- <x>\n-->";
                ++line_;
                break;
            case 1:
                text += "<![CDATA[<&]]>";
                made.text += "<&";
                break;
            case 2:
                if (depth < 8) {
                    made.children.push_back(element(depth + 1));
                }
                break;
            default:
                character(made.text, false);
            }
        }
        text += "</" + made.name + '>';
        return made;
    }

    std::mt19937& random_;
    int line_ = 1;
};

} // namespace

TEST(XmlDocument, GivesTheTreeThatWasWritten) {
    RandomCases cases;
    std::mt19937& random = cases.generator();
    for (int round = 0; round < 300; ++round) {
        const RandomDocument document(random);
        const auto result = parseXml(document.text, "x");
        ASSERT_TRUE(result) << result.fault().text() << '\n' << document.text;
        ASSERT_EQ(shown(result.value()), shown(document.tree)) << '\n' << document.text;
        // Damaged documents are read or refused by the check: the parser behind it agrees with all it lets pass.
        std::string damaged = document.text;
        damaged[random() % damaged.size()] = "<>&\"'!-?/ \x01\xFF]"[random() % 13];
        const auto second = parseXml(damaged, "x");
        ASSERT_TRUE(second || second.fault().line > 0) << second.fault().text() << '\n' << damaged;
    }
}
