// The exports of the core through the built library: identifiers, texts of codes, the environment.
#include "platform/folder.h"
#include "tests/support/tarvo_library.h"

#include <tarvo/text.hpp>

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using namespace tests;

std::u16string textOf(TarvoResult (&give)(IVaskString*)) {
    tarvo::String text(u"before");
    EXPECT_EQ(give(text.pair()), RC_OK);
    return text.text();
}

std::u16string descriptionOf(std::uint32_t code) {
    tarvo::String text;
    EXPECT_EQ(TARVO_CALL(getErrorDescription)(code, text.pair()), RC_OK);
    return text.text();
}

// The first test: what a caller's object throws must be caught even before the library itself has
// ever thrown.
TEST(CallersObjects, MayThrow) {
    static constexpr IVaskStringTable kThrows{
        [](void*, const char16_t**, std::uint32_t*) {},
        [](void* thrown, const char16_t*, std::uint32_t) -> TarvoResult {
            if (thrown == nullptr)
                throw 1;
            throw std::runtime_error("no room");
        }};
    const TarvoUUID uuid{};
    IVaskString number{nullptr, &kThrows};
    EXPECT_EQ(TARVO_CALL(vaskStringFromUUID)(&uuid, &number), RC_UNSPECIFIED);
    IVaskString standard{&number, &kThrows};
    EXPECT_EQ(TARVO_CALL(vaskStringFromUUID)(&uuid, &standard), RC_UNSPECIFIED);
}

TEST(UUIDExports, MakePrintAndRead) {
    const TarvoUUID first = TARVO_CALL(vaskGenUUID)();
    const TarvoUUID second = TARVO_CALL(vaskGenUUID)();
    EXPECT_NE(std::memcmp(&first, &second, sizeof first), 0);

    const TarvoUUID counting = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}};
    tarvo::String text;
    EXPECT_EQ(TARVO_CALL(vaskStringFromUUID)(&counting, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"{00010203-0405-0607-0809-0a0b0c0d0e0f}");
    tarvo::ConstantString constant(u"fixed");
    EXPECT_EQ(TARVO_CALL(vaskStringFromUUID)(&counting, constant.pair()), RC_READ_ONLY);

    const struct {
        const char16_t* text;
        TarvoResult result;
    } cases[] = {
        {u"{00010203-0405-0607-0809-0a0b0c0d0e0f}", RC_OK},
        {u"{00010203-0405-0607-0809-0A0B0C0D0E0F}", RC_OK},
        {u"{00010203-0405-0607-0809-0a0b0c0d0e0f", RC_OK},
        {u"{00010203-0405-0607-0809-0a0b0c0d0e0f} and more", RC_OK},
        {u"{ 0 1 2 3- 4 5- 6 7-\t8 9-+a+b c d e f", RC_OK},
        {u"00010203-0405-0607-0809-0a0b0c0d0e0f", RC_INVALID_ARGUMENT},
        {u"{0001020304-05-0607-0809-0a0b0c0d0e0f}", RC_INVALID_ARGUMENT},
        {u"{00010203-0405-0607-0809-0a0b0c0d0e}", RC_INVALID_ARGUMENT},
        {u"", RC_INVALID_ARGUMENT},
        {nullptr, RC_NULL_POINTER},
    };
    for (const auto& [given, result] : cases) {
        TarvoUUID read;
        std::memset(&read, 0xEE, sizeof read);
        EXPECT_EQ(TARVO_CALL(vaskUUIDFromString)(given, &read), result);
        const TarvoUUID expected = result == RC_OK ? counting : TarvoUUID{};
        EXPECT_EQ(std::memcmp(&read, &expected, sizeof read), 0)
            << (given ? narrow(given) : "null");
    }
}

TEST(ErrorDescription, HasATextForEveryCode) {
    const std::u16string unspecified = descriptionOf(RC_UNSPECIFIED);
    for (const std::uint32_t unknown : {2u, 99u, 118u, 499u, 508u, 600u, 604u, 0xFFFFFFFFu})
        EXPECT_EQ(descriptionOf(unknown), unspecified) << unknown;

    // The library's texts are those of the resource library under these indices.
    auto* getResource = TarvoLibrary(textOf(TARVO_CALL(getTarvoFolder)) + u"TARVOResource.DLL")
                            .find<getResourceFunction>("getResource");
    ASSERT_NE(getResource, nullptr);
    const struct {
        std::uint32_t code;
        std::uint32_t index;
    } cases[] = {{0, 0},    {1, 3},    {100, 4},  {101, 5},  {102, 6},  {103, 7},  {104, 15},
                 {105, 17}, {106, 18}, {107, 20}, {108, 21}, {109, 22}, {110, 23}, {111, 24},
                 {112, 25}, {113, 26}, {114, 19}, {115, 27}, {116, 28}, {117, 29}, {500, 8},
                 {501, 9},  {502, 10}, {503, 11}, {504, 12}, {505, 13}, {506, 14}, {507, 16},
                 {601, 30}, {602, 31}, {603, 32}};
    for (const auto& [code, index] : cases)
        EXPECT_EQ(descriptionOf(code), getResource(index)) << code;
    tarvo::ConstantString constant(u"fixed");
    EXPECT_EQ(TARVO_CALL(getErrorDescription)(0, constant.pair()), RC_READ_ONLY);
    EXPECT_EQ(TARVO_CALL(getErrorDescription)(0, nullptr), RC_NULL_POINTER);
}

TEST(Environment, TellsWhereThingsAre) {
    EXPECT_EQ(textOf(TARVO_CALL(getTarvoVersion)), u"1.2.1.2");
    EXPECT_EQ(textOf(TARVO_CALL(getTarvoLanguage)), u"en");
    const std::u16string folder = textOf(TARVO_CALL(getTarvoFolder));
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::path(folder + u"TARVO.dll"),
                                            std::filesystem::path(wide(TARVO_TEST_LIBRARY))));

    const std::u16string machine = textOf(TARVO_CALL(getTarvoDataFolder));
    const std::u16string user = textOf(TARVO_CALL(getTarvoUserDataFolder));
    EXPECT_NE(machine, user);
    for (const std::u16string& data : {machine, user}) {
        const std::u16string end = std::u16string(u"Ostrandia") +
                                   TARVO::platform::kFolderSeparator + u"TARVO" +
                                   TARVO::platform::kFolderSeparator;
        EXPECT_TRUE(data.ends_with(end)) << narrow(data);
        EXPECT_TRUE(TARVO::platform::folderExists(data)) << narrow(data);
    }
    // A folder is looked for once: it isn't made again.
    std::filesystem::remove_all(std::filesystem::path(user));
    EXPECT_EQ(textOf(TARVO_CALL(getTarvoUserDataFolder)), user);
    EXPECT_FALSE(TARVO::platform::folderExists(user));

    for (TarvoResult (*give)(IVaskString*) :
         {TarvoLibrary::get().find<getTarvoFolderFunction>("getTarvoFolder"),
          TarvoLibrary::get().find<getTarvoDataFolderFunction>("getTarvoDataFolder"),
          TarvoLibrary::get().find<getTarvoUserDataFolderFunction>("getTarvoUserDataFolder"),
          TarvoLibrary::get().find<getTarvoLanguageFunction>("getTarvoLanguage"),
          TarvoLibrary::get().find<getTarvoVersionFunction>("getTarvoVersion")}) {
        tarvo::ConstantString constant(u"fixed");
        EXPECT_EQ(give(constant.pair()), RC_READ_ONLY);
        EXPECT_EQ(give(nullptr), RC_NULL_POINTER);
    }
}

TEST(Terminate, ReturnsAtOnceWhenNothingWasStarted) {
    TARVO_CALL(tarvoTerminate)();
    TARVO_CALL(tarvoTerminate)();
    EXPECT_EQ(textOf(TARVO_CALL(getTarvoVersion)), u"1.2.1.2");
}

} // namespace
