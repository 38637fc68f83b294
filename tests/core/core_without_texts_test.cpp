// A library that stands alone, without the resource library: it loads and answers with the names
// and numbers of codes.
#include "platform/file.h"
#include "tests/support/tarvo_library.h"

#include <tarvo/reference.hpp>
#include <tarvo/text.hpp>

#include <filesystem>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace tests;

TEST(LibraryWithoutTexts, AnswersWithNamesAndNumbers) {
    const auto folder = std::filesystem::temp_directory_path() /
                        ("tarvo-alone-" + std::to_string(std::random_device()()));
    ASSERT_TRUE(std::filesystem::create_directory(folder));
    const std::u16string path = (folder / "TARVO.dll").u16string();
    ASSERT_TRUE(TARVO::platform::copyFileOver(wide(TARVO_TEST_LIBRARY), path));
    const TarvoLibrary alone(path);

    auto* describe = alone.find<getErrorDescriptionFunction>("getErrorDescription");
    const struct {
        std::uint32_t code;
        const char16_t* text;
    } cases[] = {{0, u"RC_OK (0)"},
                 {114, u"RC_ELEVATION_REFUSED (114)"},
                 {603, u"RC_CODE_603 (603)"},
                 {604, u"unknown result code (604)"}};
    for (const auto& [code, text] : cases) {
        tarvo::String given;
        EXPECT_EQ(describe(code, given.pair()), RC_OK);
        EXPECT_EQ(given.text(), text);
    }
    tarvo::String language(u"before");
    EXPECT_EQ(alone.find<getTarvoLanguageFunction>("getTarvoLanguage")(language.pair()), RC_OK);
    EXPECT_EQ(language.text(), u"");
    TARVO::platform::freeModule(alone.module());
    EXPECT_GT(std::filesystem::remove_all(folder), 1u);
}

} // namespace
