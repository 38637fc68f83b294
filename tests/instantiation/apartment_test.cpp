// COM classes are created where the calling thread's apartment lets them live.
#include "tests/instantiation/creation_fixture.h"
#include "tests/support/apartment.h"

#include <thread>

namespace {

using namespace tests;
using TARVO::platform::Apartment;

TEST(COMClass, IsCreatedWhereTheApartmentOfTheThreadAllowsIt) {
    const Module& marshal = marshalLibrary();
    Details details;
    details.locations = {{3, u"{}"}};
    TARVO::platform::removeFile(besideProgram(u"MORVEN.dll"));
    std::thread([&] {
        // Without the bridge the way in process fails, and the next call tries again.
        const support::JoinedApartment apartment(Apartment::multiThreaded);
        const Outcome refused{RC_CANNOT_CREATE, Outcome::null};
        EXPECT_EQ(create(details),
                  support::kHasApartments ? refused : Outcome(RC_OK, Outcome::instance));
    }).join();
    const Module& bridge = comBridge();
    const struct {
        Apartment apartment;
        std::uint32_t flags;
        bool inProcess;
    } cases[] = {
        {Apartment::none, 0, false},           {Apartment::none, 1, false},
        {Apartment::singleThreaded, 0, false}, {Apartment::singleThreaded, 1, true},
        {Apartment::multiThreaded, 0, true},   {Apartment::multiThreaded, 1, true},
    };
    for (const auto& [kind, flags, inProcess] : cases) {
        marshal.takeNotes();
        bridge.takeNotes();
        std::thread([&, kind = kind, flags = flags] {
            const support::JoinedApartment apartment(kind);
            EXPECT_EQ(create(details, flags), Outcome(RC_OK, Outcome::instance));
        }).join();
        const bool expected = inProcess && support::kHasApartments;
        EXPECT_EQ(bridge.takeNotes() != "", expected) << static_cast<int>(kind) << flags;
        EXPECT_EQ(marshal.takeNotes() == "", expected) << static_cast<int>(kind) << flags;
    }
    // A thread that joined nothing, while another keeps the multi-threaded apartment alive.
    const support::JoinedApartment apartment(Apartment::multiThreaded);
    std::thread([&] { EXPECT_EQ(create(details, 1).result, TarvoResult{RC_OK}); }).join();
    EXPECT_EQ(bridge.takeNotes(), "");
}

} // namespace
