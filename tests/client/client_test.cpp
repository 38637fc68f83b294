// Which installation a program finds, and what it is told if that can't serve. Each attempt is a
// process of its own, since a program binds one library for its whole life.
#include "platform/process.h"
#include "platform/system_registry.h"
#include "platform/text.h"
#include "tests/support/process.h"
#include "tests/support/text.h"

#include <tarvo/client.h>
#include <tarvo/text.hpp>

#include <gtest/gtest.h>
#include <iostream>
#include <string>

namespace {

using TARVO::platform::RegistryRoot;
using tests::narrow;

constexpr const char16_t* kParent = u"Software\\Ostrandia\\TARVO";

// "bound" or the message, and the version of the library that the table leads to.
void tryToBind() {
    tarvo::String message;
    const bool bound = loadTarvoLibrary(message.pair());
    tarvo::String version(u"none");
    if (tarvoEntryPoints()->getTarvoVersion != nullptr)
        tarvoEntryPoints()->getTarvoVersion(version.pair());
    const bool whole = tarvoEntryPoints()->dataClassFactory != nullptr &&
                       tarvoEntryPoints()->tarvoDepersistPMCFromTransitionFormat != nullptr;
    std::cout << (bound && whole ? "bound" : narrow(message.text())) << "; "
              << narrow(version.text()) << std::endl;
    if (bound)
        std::cout << (loadTarvoLibrary(nullptr) ? "again" : "not again") << std::endl;
}
const support::Role role("client", tryToBind);
const support::Role lesserRole("client without privileges", [] {
    support::leavePrivileges();
    tryToBind();
});

class Client : public testing::Test {
  protected:
    void SetUp() override { remove(); }
    void TearDown() override { remove(); }

    static void remove() {
        for (const auto root : {RegistryRoot::currentUser, RegistryRoot::localMachine}) {
            const auto parent = TARVO::platform::SystemKey::openForWriting(root, kParent);
            if (parent)
                parent.deleteTree(u"x64");
        }
    }

    static TARVO::platform::SystemKey installationKey(RegistryRoot root) {
        return TARVO::platform::SystemKey::openForWriting(root, u"Software")
            .create(u"Ostrandia\\TARVO\\x64");
    }

    static void install(RegistryRoot root, const std::string& fake, const char16_t* version) {
        if (fake.empty())
            return;
        std::u16string folder;
        TARVO::platform::appendUtf16(TARVO_TEST_FAKES + fake, folder);
        const auto key = installationKey(root);
        ASSERT_TRUE(key.setText(nullptr, folder.c_str()));
        if (version != nullptr) {
            ASSERT_TRUE(key.setText(u"version", version));
        }
    }
};

TEST_F(Client, TakesTheNewestInstallationThatItMayTrust) {
    const struct {
        const char* user;
        const char16_t* userVersion;
        const char* machine;
        const char16_t* machineVersion;
        const char* found; // its version
    } cases[] = {
        {"good", u"1.2.1.2", "newer", u"1.2.1.2", "1.2.1.0"},
        {"good", u"1.2.1.2", "newer", u"1.10.0.0", "2.0.0.0"},
        {"good", u"1.2.1.3", "newer", u"1.2.1.2", "1.2.1.0"},
        {"good", nullptr, "newer", u"0.0.0.1", "2.0.0.0"},
        {"good", nullptr, "newer", nullptr, "1.2.1.0"},
        {"", nullptr, "newer", nullptr, "2.0.0.0"},
        {"good", u"1", "", nullptr, "1.2.1.0"},
    };
    for (const auto& [user, userVersion, machine, machineVersion, found] : cases) {
        remove();
        install(RegistryRoot::currentUser, user, userVersion);
        install(RegistryRoot::localMachine, machine, machineVersion);
        support::Process lesser("client without privileges");
        support::Process full("client");
        const std::string notFound =
            "TARVO not found - please check for a valid TARVO installation; none";
        const std::string ofMachine = *machine == '\0' ? notFound : "bound; 2.0.0.0";
        const std::string newest = std::string("bound; ") + found;
        EXPECT_EQ(full.receive(), TARVO::platform::hasFullElevation() ? ofMachine : newest);
        // Windows has no rights to give up that would change the process's own token.
        if (!TARVO::platform::isWine()) {
            EXPECT_EQ(lesser.receive(), newest);
        }
    }
}

TEST_F(Client, TellsWhyALibraryCannotServe) {
    const std::string fakes = TARVO_TEST_FAKES;
    const struct {
        const char* fake;
        std::string answer;
    } cases[] = {
        {"good", "bound; 1.2.1.0"},
        {"old", "TARVO version (1.2.0) is older than the version compiled for (1.2.1); 1.2.0.9"},
        {"odd", "Invalid version string; 1.2"},
        {"silent", "getTarvoVersion entry point not found in TARVO.dll; none"},
        {"without_texts", "vaskGetErrorDescription entry point not found in TARVO.dll; 1.2.1.0"},
        {"incomplete", "vaskGetLibraryEnumerator entry point not found in TARVO.dll; 1.2.1.0"},
        {"old_and_incomplete",
         "TARVO version (1.1.9) is older than the version compiled for (1.2.1); 1.1.9.9"},
    };
    for (const auto& [fake, answer] : cases) {
        remove();
        install(RegistryRoot::localMachine, fake, u"1.2.1.2");
        support::Process client("client");
        EXPECT_EQ(client.receive(), answer);
    }
    remove();
    install(RegistryRoot::localMachine, "missing", u"1.2.1.2");
    support::Process client("client");
    const std::string answer = client.receive().value_or("");
    EXPECT_NE(answer.find("missing"), std::string::npos) << answer;
    EXPECT_NE(answer.find("TARVO.dll load error: "), std::string::npos) << answer;
    EXPECT_EQ(answer.find("unknown error"), std::string::npos) << answer;
}

TEST_F(Client, PassesOverAnInstallationWithoutAFolder) {
    const auto key = installationKey(RegistryRoot::localMachine);
    const std::byte number[4] = {};
    for (const std::uint32_t type : {TARVO::platform::kNumberValue, TARVO::platform::kTextValue}) {
        const std::size_t size = type == TARVO::platform::kTextValue ? 0 : sizeof number;
        ASSERT_TRUE(key.setValue(nullptr, type, {number, size}));
        support::Process client("client");
        EXPECT_EQ(client.receive().value_or("").substr(0, 15), "TARVO not found");
    }
}

} // namespace
