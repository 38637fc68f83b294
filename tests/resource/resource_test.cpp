// The texts of the resource library as TARVO.dll asks for them: from the built file, by index.
#include "platform/module.h"
#include "platform/text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>

namespace {

class Resource : public testing::Test {
  protected:
    void SetUp() override {
        std::u16string path;
        TARVO::platform::appendUtf16(RESOURCE_LIBRARY, path);
        module_ = TARVO::platform::loadModule(path);
        ASSERT_NE(module_, nullptr);
        getResource_ = reinterpret_cast<const char16_t* (*)(std::uint32_t)>(
            TARVO::platform::findSymbol(module_, "getResource"));
        ASSERT_NE(getResource_, nullptr);
    }
    void TearDown() override { TARVO::platform::freeModule(module_); }

    const char16_t* text(std::uint32_t index) const { return getResource_(index); }

  private:
    TARVO::platform::ModuleHandle module_ = nullptr;
    const char16_t* (*getResource_)(std::uint32_t) = nullptr;
};

TEST_F(Resource, EveryIndexInUseHasASentenceOfItsOwn) {
    std::set<std::u16string_view> seen;
    for (std::uint32_t index = 0; index <= 32; ++index) {
        if (index == 1 || index == 2) {
            continue;
        }
        SCOPED_TRACE(index);
        ASSERT_NE(text(index), nullptr);
        const std::u16string_view sentence = text(index);
        EXPECT_TRUE(sentence.ends_with(u'.'));
        EXPECT_TRUE(seen.insert(sentence).second);
    }
}

TEST_F(Resource, LanguageIsEnglish) {
    ASSERT_NE(text(2), nullptr);
    EXPECT_EQ(std::u16string_view{text(2)}, u"en");
}

TEST_F(Resource, OtherIndicesHaveNone) {
    for (const std::uint32_t index : {1u, 33u, 34u, 1000u, 0x80000000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(text(index), nullptr) << index;
    }
}

// The indices don't run in the order of the codes; a text that names its code must stand at the
// index of that code.
TEST_F(Resource, ReservedCodesStandAtTheirIndex) {
    struct Case {
        std::uint32_t index;
        std::u16string_view code;
    };
    constexpr Case cases[] = {{5, u"101"},  {21, u"108"}, {23, u"110"}, {27, u"115"},
                              {29, u"117"}, {13, u"505"}, {31, u"602"}, {32, u"603"}};
    for (const Case& one : cases) {
        ASSERT_NE(text(one.index), nullptr);
        EXPECT_NE(std::u16string_view{text(one.index)}.find(one.code), std::u16string_view::npos)
            << one.index;
    }
}

} // namespace
