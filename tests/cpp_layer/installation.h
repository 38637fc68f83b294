// A machine on which the built library is installed and the example component is registered, which
// is what a host finds.
#pragma once

#include "igreeter.h"
#include "platform/process.h"
#include "platform/system_registry.h"
#include "tests/persistence/state_support.h"
#include "tests/support/text.h"

#include <tarvo/tarvo.hpp>

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace tests {

// The only one that programs of an administrator create components from.
inline tarvo::Scope trustedScope() {
    return TARVO::platform::isElevated() ? tarvo::Scope::allUsers : tarvo::Scope::currentUser;
}

inline TARVO::platform::SystemKey installations() {
    const auto root = TARVO::platform::isElevated() ? TARVO::platform::RegistryRoot::localMachine
                                                    : TARVO::platform::RegistryRoot::currentUser;
    return TARVO::platform::SystemKey::openForWriting(root, u"Software")
        .create(u"Ostrandia\\TARVO");
}

inline void installLibrary() {
    const auto key = installations().create(u"x64");
    std::filesystem::path folder = TARVO_TEST_LIBRARY;
    folder.remove_filename();
    ASSERT_TRUE(key.setText(nullptr, folder.u16string().c_str()));
    ASSERT_TRUE(key.setText(u"version", u"1.2.1.2"));
}

// A registration of the greeter under some identifier and ProgID, to be committed.
inline tarvo::Registrar registerGreeter(const tarvo::RegistryWriter& writer,
                                        const tarvo::UUID& uuid, tarvo::CText progId) {
    tarvo::Registrar greeter = writer.createRegistrar();
    greeter.setUuid(uuid);
    greeter.setName(u"Greeter");
    greeter.setVaskVersion(u"1.2");
    greeter.setProgId(progId);
    greeter.setDescription(u"Greets");
    greeter.addCategory(kIGreeterId);
    greeter.setLocation(tarvo::Location::inproc64, wide(TARVO_TEST_GREETER));
    return greeter;
}

// What the greeter would have saved through COM, with these values.
inline std::shared_ptr<StateTree> savedState(decltype(StateTree::values) values) {
    StateTree tree;
    tree.values = std::move(values);
    auto saved = std::make_shared<StateTree>();
    saved->values[u"TransitionFormat"] = u"Stream";
    saved->values[u"data"] = payloadOf(std::make_shared<StateTree>(std::move(tree)));
    return saved;
}

class InstalledLibrary : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        installLibrary();
        tarvo::load();
        const tarvo::RegistryWriter writer(trustedScope());
        registerGreeter(writer, kGreeterComponentId, u"Example.Greeter").commit();
        writer.commit();
    }

    // The system's registry may be that of other tests too.
    static void TearDownTestSuite() {
        const tarvo::RegistryWriter writer(trustedScope());
        for (const auto& component : tarvo::Catalogue().all())
            writer.unregisterComponent(component.uuid());
        writer.commit();
        EXPECT_TRUE(installations().deleteTree(u"x64"));
    }
};

} // namespace tests
