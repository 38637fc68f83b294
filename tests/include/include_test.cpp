#include "caller.h"

#include <tarvo/identifiers.h>
#include <tarvo/result.h>

#include <cstring>
#include <gtest/gtest.h>
#include <string_view>

namespace {

// A result by value comes back in registers on one platform and through memory on the other.
TEST(Include, CallerInCUsesLibrary) {
    const TarvoUUID made = generateUUID();
    CallerText text;
    initialiseText(&text);
    ASSERT_EQ(printUUID(&made, &text), TarvoResult{RC_OK});
    EXPECT_EQ(text.length, 38u);
    TarvoUUID read{};
    ASSERT_EQ(readUUID(&text, &read), TarvoResult{RC_OK});
    EXPECT_EQ(std::memcmp(&made, &read, sizeof made), 0);
}

// The texts are how the identifiers are published; the bytes are what components compare.
TEST(Include, IdentifiersPrintAsPublished) {
    const struct {
        const TarvoUUID& identifier;
        std::u16string_view text;
    } cases[] = {
        {kIVaskInterfaceId, u"{53a74ee9-adfa-4916-be95-04e9283cc22e}"},
        {kITarvoIdentificationId, u"{a9b39e4a-7d48-4081-a17f-6522824085b5}"},
        {kITarvoCollectionId, u"{deafea79-d349-4d03-bb05-377c0d3e478b}"},
        {kIVaskPMCRegistrationDetailsId, u"{0e6e73ef-dc77-4acb-9074-bbfc8dcb05e2}"},
        {kIVaskLibraryDetailsId, u"{8de5ea0e-e80a-4ace-befe-1f7f72aaf484}"},
        {kIVaskPersistReaderId, u"{827418a6-6515-40cf-81a7-dab8cf8fa176}"},
        {kIVaskIdentificationId, u"{12ebf184-f47a-4407-b52a-7fcc0a70451c}"},
        {kIVaskPersistId, u"{aba65dc8-93f9-4953-897d-a8fa8ea4eeae}"},
    };
    for (const auto& [identifier, expected] : cases) {
        CallerText text;
        initialiseText(&text);
        ASSERT_EQ(printUUID(&identifier, &text), TarvoResult{RC_OK});
        EXPECT_TRUE(std::u16string_view(text.units) == expected)
            << testing::PrintToString(text.units);
    }
}

} // namespace
