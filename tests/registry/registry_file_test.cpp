// What a scope shows for files of every sort: good, odd, malformed, hostile, unreadable.
#include "tests/support/registry_files.h"
#include "tests/support/small_stack.h"

#include <thread>

namespace {

using namespace tests;
using tarvo::Reference;

class RegistryFile : public testing::Test {
  protected:
    void SetUp() override {
        removeScope(Scope::user);
        removeScope(Scope::machine);
    }

    static void writeUser(std::string_view bytes) { writeFile(registryFile(Scope::user), bytes); }
};

TEST_F(RegistryFile, ReadsOddButGoodFiles) {
    const struct {
        const char* content; // inside a registry element with an id of its own
        const char16_t* text;
    } cases[] = {
        {R"(<value name="a" type="string">c</value>)", u"c"},
        {R"(<value name="a" type="string"/>)", u""},
        {R"(<value type = "string"	name="no" name  ="a">c</value  x>)", u"c"},
        {R"(<!-- key --><value name="a" type="string">1<!-- cut -->2</value>)", u"2"},
        {R"(<value name="a" type="string">1<?cut?></value>)", u"1"},
        {R"(<value name="a" type="string">1<b>2</b></value>)", u"2"},
        {R"(<value name="a" type="string">1<value name="a" type="x">2</value></value>)", u"2"},
        {R"(<value name="a" type="string"> 1
</value>)",
         u" 1\n"},
        {R"(<value name="a" type="string">&#65;&#x41;&#3;&foo;&amp;&quot;&apos;&#9;&#12345;</value>)",
         u"AA&foo;&\"'\t&#12345;"},
        {R"(<value name="&#97;" type="&#115;tring">c</value>)", u"c"},
        {R"(<other><key name="UPPER"/><value name="a"/></other><value name="a" type="string">c</value>)",
         u"c"},
        {"text <value name=\"a\" type=\"string\">\xC3\x84\xF0\x9F\x98\x80\xFF</value>",
         u"\u00C4\U0001F600\uFFFD"},
    };
    for (const auto& [content, text] : cases) {
        setScope(Scope::user, content);
        const auto root = keyAt(nullptr);
        EXPECT_EQ(textOf(*root, u"a"), text) << content;
        EXPECT_EQ(valueNames(*root), Names{u"a"}) << content;
        EXPECT_TRUE(keyNames(*root).empty()) << content;
    }
}

TEST_F(RegistryFile, ReadsIntegers) {
    const struct {
        const char* text;
        std::int64_t number; // beyond 32 bits: malformed
    } cases[] = {
        {"0", 0},
        {" 12", 12},
        {"+7", 7},
        {"-2147483648", INT32_MIN},
        {"2147483648", INT32_MAX},
        {"-99999999999999999999999", INT32_MIN},
        {"99999999999999999999999", INT32_MAX},
        {"\n\t 007", 7},
        {"1<!-- -->2", 2},
        {"12 ", INT64_MAX},
        {"12\n", INT64_MAX},
        {"", INT64_MAX},
        {" ", INT64_MAX},
        {"+", INT64_MAX},
        {"- 1", INT64_MAX},
        {"0x10", INT64_MAX},
        {"&#3;", INT64_MAX},
    };
    for (const auto& [text, number] : cases) {
        setScope(Scope::user, "");
        keyAt(nullptr); // known: an empty tree
        setScope(Scope::user,
                 std::string("<value name=\"i\" type=\"integer\">") + text + "</value>");
        const auto root = keyAt(nullptr);
        std::int32_t read = 0;
        const TarvoResult result = root->table->getIntegerValue(root->me, u"i", nullptr, &read);
        if (number == INT64_MAX) {
            EXPECT_EQ(result, RC_NOT_FOUND) << text;
        } else {
            EXPECT_EQ(result, RC_OK) << text;
            EXPECT_EQ(read, number) << text;
        }
    }
}

TEST_F(RegistryFile, KeepsWhatWasKnownWhenTheFileIsMalformed) {
    const char* const cases[] = {
        R"(<key name="A"/>)",
        R"(<key name=""/>)",
        R"(<key name="&#3;"/>)",
        R"(<key name="a&#47;b"/>)",
        R"(<key name="a\b"/>)",
        R"(<key name="a&#9;b"/>)",
        R"(<key/>)",
        R"(<key name='a'/>)",
        R"(<key name="a"/><key name="a"/>)",
        R"(<value name="a"/>)",
        R"(<value type="empty"/>)",
        R"(<value name="a" type="String"/>)",
        R"(<value name="a" type="empty"/><value name="a" type="empty"/>)",
        R"(<value name="a" type="uuid">{00010203-0405-0607-0809-0A0B0C0D0E0F}</value>)",
        R"(<value name="a" type="uuid"/>)",
        R"(<registry/>)",
        R"(</key>)",
        R"(<key name="a"></value>)",
        R"(<other></Other>)",
        R"(</registry><registry>)",
    };
    setScope(Scope::user, R"(<value name="known" type="string">yes</value>)");
    ASSERT_EQ(textOf(*keyAt(nullptr), u"known"), u"yes");
    for (const char* content : cases) {
        setScope(Scope::user, content);
        EXPECT_EQ(textOf(*keyAt(nullptr), u"known"), u"yes") << content;
    }
    writeUser(registryText("") + "</registry>");
    EXPECT_EQ(textOf(*keyAt(nullptr), u"known"), u"yes");
}

TEST_F(RegistryFile, IsParsedAnewExactlyWhenItsIdIsAnother) {
    const auto file = [](const char* head, const char* text) {
        return std::string(head) + "<value name=\"a\" type=\"string\">" + text +
               "</value></registry>";
    };
    const struct {
        const char* head;
        bool followed; // is a changed content under the same head seen?
    } cases[] = {
        {"<registry id=\"one\">", false},
        {"<?xml version=\"1.0\"?>\n<!-- c --><registry id=\"two\" id=\"three\">", false},
        {"\xEF\xBB\xBF<registry x=\"y\" id=\"f&#111;ur\">", false},
        {"<registry>", true},
        {"<registry id=\"\">", true},
        {"<registry id=\"&#8;\">", true},
    };
    for (const auto& [head, followed] : cases) {
        for (const std::size_t padding : {std::size_t{0}, std::size_t{5000}}) {
            const std::string front = "<!--" + std::string(padding, 'x') + "-->" + head;
            removeScope(Scope::user);
            keyAt(nullptr);
            writeUser(file(front.c_str(), "first"));
            EXPECT_EQ(textOf(*keyAt(nullptr), u"a"), u"first") << head;
            writeUser(file(front.c_str(), "second"));
            EXPECT_EQ(textOf(*keyAt(nullptr), u"a"), followed ? u"second" : u"first") << head;
        }
    }
}

// Files are read in pieces; wherever one ends within an element, nothing is lost.
TEST_F(RegistryFile, IsReadWholeWhereverItsPiecesEnd) {
    constexpr std::size_t kFirstPiece = 4096;
    const std::string longText(100'000, 'l');
    const std::string content = R"(<key name="k"><value name="a" type="string">text</value></key>
        <value  name="b" type="string">1<!-- cut -->&#50;</value>)"
                                R"(<value name="c" type="string">)" +
                                longText + "</value>";
    for (std::size_t before = kFirstPiece - 200; before < kFirstPiece; ++before) {
        setScope(Scope::user, std::string(before, ' ') + content);
        const auto root = keyAt(nullptr);
        ASSERT_EQ(textOf(*root, u"a", u"k"), u"text") << before;
        ASSERT_EQ(textOf(*root, u"b"), u"2") << before;
        ASSERT_EQ(textOf(*root, u"c").size(), longText.size()) << before;
    }
}

TEST_F(RegistryFile, SurvivesARegistryTagInsideAnIgnoredElement) {
    const struct {
        const char* bytes;
        Names keys;
        Names values;
    } cases[] = {
        {R"(<key name="x"><registry></registry></key>)", {}, {}},
        {R"(<key name="x"><registry></registry></key><key name="b"/>)", {u"b"}, {}},
        {R"(<key><registry></registry></key><key name="b"><value name="v" type="empty"/></key>
            <value name="w" type="empty"/>)",
         {u"b"},
         {u"w"}},
        {R"(<registry><key name="k"><value name="a" type="string">t</value></key></registry>
            <value><registry></registry></value>)",
         {u"k"},
         {u"a"}},
    };
    for (const auto& [bytes, keys, values] : cases) {
        writeUser(bytes);
        const auto root = keyAt(nullptr);
        EXPECT_EQ(keyNames(*root), keys) << bytes;
        EXPECT_EQ(valueNames(*root), values) << bytes;
    }
}

TEST_F(RegistryFile, ReportsAScopeThatCantBeRead) {
    Reference<IVaskRegistryKey> key;
    setScope(Scope::user, R"(<value name="a" type="string">user</value>)");
    setScope(Scope::machine, "");
    keyAt(nullptr);
    removeScope(Scope::machine);
    std::filesystem::create_directory(registryFile(Scope::machine));
    EXPECT_EQ(openKey(nullptr, key), RC_ACCESS_DENIED);
    EXPECT_FALSE(key);
    removeScope(Scope::machine);
    EXPECT_EQ(textOf(*keyAt(nullptr), u"a"), u"user");
    std::filesystem::remove(registryFile(Scope::user));
    std::filesystem::create_directory(registryFile(Scope::user));
    EXPECT_EQ(openKey(nullptr, key), RC_ACCESS_DENIED);
}

TEST_F(RegistryFile, IsEmptyWhenItHoldsNothing) {
    setScope(Scope::user, R"(<value name="a" type="empty"/>)");
    EXPECT_EQ(valueNames(*keyAt(nullptr)), Names{u"a"});
    writeUser("");
    EXPECT_TRUE(valueNames(*keyAt(nullptr)).empty());
    writeUser("no tag at all");
    EXPECT_TRUE(valueNames(*keyAt(nullptr)).empty());
    writeUser(R"(<registry><value name="a" type="empty"/><key name="open">)");
    EXPECT_EQ(valueNames(*keyAt(nullptr)), Names{u"a"});
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

std::string manySiblings() {
    std::string text;
    for (int i = 0; i < 100000; ++i)
        text += "<key name=\"k" + std::to_string(i) + "\"/>";
    return text;
}

void readHostileFiles() {
    constexpr std::size_t kMany = 200000;
    const std::string million(1000000, 'n');
    const struct {
        std::string content;
        std::size_t keys;
        std::size_t values;
    } cases[] = {
        {"<key name=\"" + million + "\"/>", 1, 0},
        {"<value name=\"" + million + "\" type=\"string\">" + million + "</value>", 0, 1},
        {"<!--" + million + "--><key name=\"a\"/>", 1, 0},
        {"<!-- " + repeated("<", 1000000) + " --><key name=\"a\"/>", 1, 0},
        {"<" + million + " " + million + "/><key name=\"a\"/>", 1, 0},
        {"<key name=\"a\"" + repeated(" x", kMany) + repeated("=\" ", 3) + "/>", 1, 0},
        {repeated("<key name=\"a\">", kMany) + repeated("</key>", kMany), 1, 0},
        {repeated("<x>", kMany) + repeated("</x>", kMany) + "<key name=\"a\"/>", 1, 0},
        {manySiblings(), 100000, 0},
        {repeated("<", 1000000), 0, 0},
        {repeated("<!-- ", kMany), 0, 0},
        {"<value name=\"a\" type=\"string\">" + repeated("&#", kMany) + "</value>", 0, 1},
        {"<value name=\"a\" type=\"string\">" + std::string(1000000, '\0') + "</value>", 0, 1},
        {"<value name=\"a\" type=\"string\">" + std::string(1000000, '\xFF') + "</value>", 0, 1},
    };
    for (const auto& [content, keys, values] : cases) {
        setScope(Scope::user, content);
        const auto root = keyAt(nullptr);
        EXPECT_EQ(keyNames(*root).size(), keys) << content.substr(0, 40);
        EXPECT_EQ(valueNames(*root).size(), values) << content.substr(0, 40);
    }
    removeScope(Scope::user);
    EXPECT_TRUE(keyNames(*keyAt(nullptr)).empty()); // the deep trees are torn down by now
}

TEST_F(RegistryFile, SurvivesHostileFiles) {
    readHostileFiles();
}

TEST_F(RegistryFile, SurvivesHostileFilesOnASmallStack) {
    runWithSmallStack(readHostileFiles);
}

} // namespace
