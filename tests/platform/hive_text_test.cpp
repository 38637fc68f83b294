#include "platform/posix/hive_text.h"
#include "tests/support/small_stack.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace {

constexpr std::string_view kFirstLine = "Windows Registry Editor Version 5.00\n";

// What would be written of a hive after it was read; nothing if it can't be read.
std::optional<std::string> rewritten(std::string_view text) {
    TARVO::platform::HiveTree tree;
    if (!readHive(text, u"HKEY_X", tree)) {
        return std::nullopt;
    }
    std::string result = writeHive(*tree.root(), u"HKEY_X");
    // What every hive has adds nothing to a case.
    constexpr std::string_view standard = "\n[HKEY_X\\Software]\n"
                                          "\n[HKEY_X\\Software\\Classes]\n"
                                          "\n[HKEY_X\\Software\\Classes\\CLSID]\n"
                                          "\n[HKEY_X\\Software\\Classes\\Wow6432Node]\n"
                                          "\n[HKEY_X\\Software\\Classes\\Wow6432Node\\CLSID]\n";
    EXPECT_NE(result.find(standard), std::string::npos);
    return result.erase(result.find(standard), standard.size()).erase(0, kFirstLine.size());
}

TEST(HiveText, IsReadInAnySpellingAndWrittenInOne) {
    struct Case {
        std::string read;
        std::string written;
    };
    const std::string top = "\n[HKEY_X]\n";
    for (const auto& [read, written] : std::vector<Case>{
             {"", top},
             {"[hkey_x]\r\n\r\n; remark\n@=\"\" \t\r\n", top + "@=\"\"\n"},
             {"[HKEY_X]\n\"B\"=\"1\"\n\"a\"=\"2\"\n\"b\"=\"3\"",
              top + "\"a\"=\"2\"\n\"B\"=\"3\"\n"},
             {"[HKEY_X\\z]\n@=dword:2A\n[HKEY_X\\a]b]\n[HKEY_X\\Z\\Y]\n[HKEY_X\\Z]\n\"v\"=hex:",
              top + "\n[HKEY_X\\a]b]\n\n[HKEY_X\\z]\n@=dword:0000002a\n\"v\"=hex:\n\n"
                    "[HKEY_X\\z\\Y]\n"},
             {"[HKEY_X]\n@=hex(2):61,\\\r\n  0,\\\n\n", "\n(malformed)"},
             {"[HKEY_X]\n@=hex(2):\\\r\n  61, \\\n 0,AB\n", top + "@=hex(2):61,00,ab\n"},
             {"[HKEY_X]\n@=hex(1):61,00,00,00\n", top + "@=\"a\"\n"},
             {"[HKEY_X]\n@=\"one\r\ntwo\"\n",
              top + "@=hex(1):6f,00,6e,00,65,00,0d,00,0a,00,74,00,77,00,6f,00,00,00\n"},
             {"[HKEY_X]\n\"\\\\\\\"\"=hex(fFfFfFfF):00\n", top + "\"\\\\\\\"\"=hex(ffffffff):00\n"},
             {"[HKEY_X\\\xC3\xA4\xF0\x9F\x98\x80]\n",
              top + "\n[HKEY_X\\\xC3\xA4\xF0\x9F\x98\x80]\n"},
         }) {
        const auto result = rewritten(std::string{kFirstLine} + read);
        EXPECT_EQ(result.value_or("\n(malformed)"), written) << read;
        if (result) {
            EXPECT_EQ(rewritten(std::string{kFirstLine} + *result), result);
        }
    }
    EXPECT_EQ(rewritten("\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n"), top);
}

TEST(HiveText, IsRefusedIfAnyOfItIsNotUnderstood) {
    for (const std::string_view bad : {"", "REGEDIT4\n", "\n"}) {
        EXPECT_EQ(rewritten(bad), std::nullopt) << bad;
    }
    for (const std::string& bad : std::initializer_list<std::string>{
             "x", "@=\"before any key\"", "[HKEY_Y]", "[HKEY_XY]", "[HKEY_X", "[-HKEY_X\\a]",
             "[HKEY_X\\]", "[HKEY_X\\a\\]", "[]", "[", "[HKEY_X\\\x01]",
             "[HKEY_X\\" + std::string(256, 'n') + "]", "[HKEY_X] x", "[HKEY_X\\\xFF]",
             "[HKEY_X\\\xED\xA0\x80]"}) {
        EXPECT_EQ(rewritten(std::string{kFirstLine} + bad), std::nullopt) << bad;
    }
    for (const std::string_view bad : {"@",
                                       "@=",
                                       "@=x",
                                       "@=-",
                                       "@=\"",
                                       "@=\"\\\"",
                                       "@=\"C:\\temp\"",
                                       "@=\"a\" b",
                                       "\"a=\"",
                                       "\"a\" =\"b\"",
                                       "a=\"b\"",
                                       "@=dword:",
                                       "@=dword:123456789",
                                       "@=dword:g",
                                       "@=hex",
                                       "@=hex(:",
                                       "@=hex():",
                                       "@=hex(1:",
                                       "@=hex:,",
                                       "@=hex:1,",
                                       "@=hex:1,,2",
                                       "@=hex:123",
                                       "@=hex:1 2",
                                       "@=hex:1,\\ 2",
                                       "@=\"\"\n\"x\""}) {
        EXPECT_EQ(rewritten(std::string{kFirstLine} + "[HKEY_X]\n" + std::string{bad}),
                  std::nullopt)
            << bad;
    }
}

TEST(HiveText, NeedsLittleStackHoweverDeepItIs) {
    tests::runWithSmallStack([] {
        const auto nested = [](int depth) {
            std::string text{kFirstLine};
            text += "[HKEY_X";
            for (int i = 0; i < depth; ++i) {
                text += "\\k";
            }
            return text += "]\n";
        };
        EXPECT_NE(rewritten(nested(100)), std::nullopt);
        EXPECT_EQ(rewritten(nested(101)), std::nullopt);
        EXPECT_EQ(rewritten(nested(1'000'000)), std::nullopt);
    });
}

} // namespace
