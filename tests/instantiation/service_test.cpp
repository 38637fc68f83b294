// Services of the marshal library: started once, shared, stopped together, and their failures.
#include "tests/instantiation/creation_fixture.h"

#include <tarvo/environment.h>

#include <chrono>
#include <thread>
#include <vector>

namespace {

using namespace tests;

Details at(std::uint32_t location, std::u16string_view text) {
    Details details;
    details.locations = {{location, std::u16string(text)}};
    return details;
}

TarvoResult resultAt(std::uint32_t location, std::u16string_view text, std::uint32_t flags = 0) {
    Details details = at(location, text);
    return create(details, flags).result;
}

std::chrono::milliseconds timeToTerminate() {
    const auto start = std::chrono::steady_clock::now();
    tarvoTerminate();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start);
}

constexpr std::chrono::milliseconds kTimeToEnd{500};

TEST(Services, AreStartedOnceForEachTargetAndStoppedInOrder) {
    const Module& marshal = marshalLibrary();
    tarvoTerminate();
    marshal.takeNotes();
    const std::string created = "create 42 with flags 0\ninstance released, 1\n";
    const struct {
        std::uint32_t location;
        std::u16string_view text;
        std::string started;
    } cases[] = {
        {5, u"local", "start local\n"},
        {0, u"32.dll", "start 00\n"},
        {2, u"{}", ""},
        {4, u"tarvo://host:80", "start host at 80\n"},
        {4, u"tarvo://host:80", ""},
        {4, u"tarvo://host:080", "start host at 80\n"},
        {5, u"Local", "start Local\n"},
        {5, u"", "start \n"},
    };
    for (const auto& [location, text, started] : cases) {
        EXPECT_EQ(resultAt(location, text), TarvoResult{RC_OK});
        // The count of the service: the table's reference stays.
        EXPECT_EQ(marshal.takeNotes(),
                  started + created + "service released, 1\ninstance released, 0\n");
    }
    Details apartmentBound = at(1, u"64.dll");
    apartmentBound.flags = 1;
    EXPECT_EQ(create(apartmentBound).result, TarvoResult{RC_OK});
    EXPECT_EQ(marshal.takeNotes().substr(0, 9), "start 11\n");

    marshal.answerWith({.stop = 5});
    EXPECT_LT(timeToTerminate(), kTimeToEnd);
    EXPECT_EQ(marshal.takeNotes(), "stop 00\n");
    marshal.answerWith({});
    EXPECT_GE(timeToTerminate(), kTimeToEnd);
    std::string stopped = "stop 00\nstop 11\nstop host at 80\nstop host at 80\n"
                          "stop \nstop Local\nstop local\n";
    for (int i = 0; i < 7; ++i)
        stopped += "service released, 0\n";
    EXPECT_EQ(marshal.takeNotes(), stopped);
    EXPECT_LT(timeToTerminate(), kTimeToEnd);

    EXPECT_EQ(resultAt(0, u"32.dll"), TarvoResult{RC_OK});
    EXPECT_EQ(marshal.takeNotes().substr(0, 9), "start 00\n");
    tarvoTerminate();
}

std::size_t countOf(std::string_view line, std::string_view notes) {
    std::size_t count = 0;
    for (std::size_t at = notes.find(line); at != notes.npos; at = notes.find(line, at + 1))
        ++count;
    return count;
}

TEST(Services, AndLibrariesServeManyThreadsWhileTheyAreStopped) {
    constexpr std::size_t kThreads = 8;
    constexpr std::size_t kTimes = 50;
    const Module& marshal = marshalLibrary();
    tarvoTerminate();
    marshal.takeNotes();
    component().takeNotes();
    std::vector<std::thread> creators;
    for (std::size_t thread = 0; thread < kThreads; ++thread)
        creators.emplace_back([thread] {
            for (std::size_t i = 0; i < kTimes; ++i) {
                if (thread == 0 && i % 20 == 10)
                    tarvoTerminate();
                EXPECT_EQ(resultAt(0, u"32.dll"), TarvoResult{RC_OK});
                EXPECT_EQ(resultAt(1, builtModule("component.dll")), TarvoResult{RC_OK});
            }
        });
    for (std::thread& creator : creators)
        creator.join();
    tarvoTerminate();
    const std::string notes = marshal.takeNotes();
    EXPECT_GE(countOf("start 00\n", notes), 1u);
    EXPECT_EQ(countOf("service released, 0\n", notes), countOf("start 00\n", notes));
    EXPECT_EQ(countOf("instance released, 0\n", notes), kThreads * kTimes);
    EXPECT_EQ(countOf("instance released, 0\n", component().takeNotes()), kThreads * kTimes);
}

TEST(Services, PassOnTheirFailures) {
    const Module& marshal = marshalLibrary();
    marshal.takeNotes();
    const struct {
        Answers answers;
        TarvoResult result;
        const char* notes;
    } cases[] = {
        {{.start = 9}, 9, "start s\n"},
        {{.start = RC_SEE_LAST_ERROR}, RC_BAD_LOCATION, "start s\n"},
        {{.create = 9}, 9, "start s\ncreate 42 with flags 1\nservice released, 1\n"},
        {{.create = RC_SEE_LAST_ERROR},
         RC_BAD_LOCATION,
         "create 42 with flags 1\nservice asked for its last error\nservice released, 1\n"},
    };
    for (const auto& [answers, result, notes] : cases) {
        marshal.answerWith(answers);
        Details details = at(5, u"s");
        EXPECT_EQ(create(details, 1), Outcome(result, Outcome::null));
        EXPECT_EQ(marshal.takeNotes(), notes);
    }
    // A service that isn't one takes its place all the same, and is in the way of stopping.
    marshal.answerWith({.givesService = false});
    for (const char* notes : {"start 00\n", ""}) {
        EXPECT_EQ(resultAt(0, u""), TarvoResult{RC_NULL_POINTER});
        EXPECT_EQ(marshal.takeNotes(), notes);
    }
    EXPECT_LT(timeToTerminate(), kTimeToEnd);
    EXPECT_EQ(marshal.takeNotes(), "");
    marshal.answerWith({});
}

} // namespace
