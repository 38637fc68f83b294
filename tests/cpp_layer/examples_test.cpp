// The examples in the headers of the C++ layer do what their readers expect of them: each runs to
// its end, on a machine with an installation and the example component.
#include "tests/cpp_layer/installation.h"

#include <tarvo/component.hpp>

#include <iostream>

namespace {

// The names that an example may use without telling where they come from.
class Examples : public tests::InstalledLibrary {
  protected:
    const tarvo::Scope scope = tests::trustedScope();
    const tarvo::Reference<IVaskInterface> greeter_ = tarvo::createInstance(kGreeterComponentId);
    IVaskInterface* const instance = greeter_.get();

    const std::vector<std::uint8_t> savedBytes = std::get<std::vector<std::uint8_t>>(
        tests::savedState({{u"greeting", u"Good morning"}})->values[u"data"]);

    const tarvo::Reference<IVaskPersistReader> state_ = tarvo::offerState([] {
        auto tree = std::make_shared<tarvo::StateTree>();
        tarvo::Value tuning;
        tuning.setReal(440);
        tree->values = {{u"volume", 0.5},
                        {u"tuning", tuning},
                        {u"gains", std::vector<double>{1, 0.25}},
                        {u"tunings", std::vector<tarvo::Value>{tuning, tuning}}};
        tree->addNode(u"first").values[u"pitch"] = 7;
        return tree;
    }());
    IVaskPersistReader* const reader = state_.get();
};

#include "examples.inc"

TEST_F(Examples, TellTheState) {
    const auto clicks = tarvo::Reference<tarvo::StateSource>::share(new Clicks);
    EXPECT_EQ(tarvo::StateReader::share(clicks->pair()).integer(u"count"), 3);
}

TEST_F(Examples, LeaveWhatTheyWrite) {
    EXPECT_EQ(tarvo::RegistryKey::open(u"/example/settings").integer(u"port"), 8080);
    EXPECT_EQ(tarvo::RegistryKey::open(u"/example").string(u"greeting"), u"Hello");
    EXPECT_TRUE(tarvo::Catalogue().find(u"Example.Clock"));
}

} // namespace
