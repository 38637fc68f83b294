// A component that says of itself what a case needs, and the modules that create it.
#pragma once

#include "instantiation/creation.h"
#include "platform/file.h"
#include "platform/module.h"
#include "platform/process.h"
#include "tests/instantiation/stand_in.h"
#include "tests/support/text.h"

#include <tarvo/text.hpp>

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace tests {

// Details of a component's registration that note down how they are asked.
class Details {
  public:
    std::map<std::uint32_t, std::u16string> locations;
    TarvoResult uuidResult = RC_OK;
    TarvoResult flagsResult = RC_OK;
    std::uint32_t flags = 0;
    std::uint32_t allUsers = 1;

    IVaskPMCRegistrationDetails pair{this, &kTable};
    std::string asked;

  private:
    void note(const std::string& what) { asked += (asked.empty() ? "" : " ") + what; }

    static TarvoResult getUUID(void* me, TarvoUUID* uuid) {
        auto* details = static_cast<Details*>(me);
        details->note("uuid");
        *uuid = {};
        uuid->bytes[15] = 42;
        return details->uuidResult;
    }
    static TarvoResult getLocation(void* me, std::uint32_t location, IVaskString* text) {
        auto* details = static_cast<Details*>(me);
        details->note("location" + std::to_string(location));
        const auto found = details->locations.find(location);
        return found == details->locations.end() ? TarvoResult{RC_NOT_FOUND}
                                                 : tarvo::setText(text, found->second);
    }
    static TarvoResult isLocationAllUsers(void* me, std::uint32_t location, std::uint32_t* answer) {
        auto* details = static_cast<Details*>(me);
        details->note("allUsers" + std::to_string(location));
        *answer = details->allUsers;
        return RC_NOT_FOUND; // what matters is the answer
    }
    static TarvoResult getFlags(void* me, std::uint32_t* flags) {
        auto* details = static_cast<Details*>(me);
        details->note("flags");
        *flags = details->flags;
        return details->flagsResult;
    }

    static constexpr IVaskPMCRegistrationDetailsTable kTable = [] {
        IVaskPMCRegistrationDetailsTable table{};
        table.getUUID = getUUID;
        table.getLocation = getLocation;
        table.isLocationAllUsers = isLocationAllUsers;
        table.getFlags = getFlags;
        return table;
    }();
};

// One of the modules of the test, as the library loads it.
class Module {
  public:
    explicit Module(const std::u16string& path) : module_(TARVO::platform::loadModule(path)) {
        EXPECT_NE(module_, nullptr);
    }

    std::string takeNotes() const {
        return reinterpret_cast<takeNotesFunction*>(
            TARVO::platform::findSymbol(module_, "takeNotes"))();
    }
    void answerWith(const Answers& answers) const {
        reinterpret_cast<answerWithFunction*>(TARVO::platform::findSymbol(module_, "answerWith"))(
            answers);
    }

  private:
    TARVO::platform::ModuleHandle module_;
};

// The folder of the test program, where the marshal library and the COM bridge belong.
inline std::u16string besideProgram(std::u16string_view name) {
    const std::u16string program = TARVO::platform::ownModulePath();
    return program.substr(0, program.find_last_of(u"/\\") + 1).append(name);
}

inline std::u16string builtModule(std::string_view name) {
    return wide(TARVO_TEST_MODULES + std::string(name));
}

inline const Module& component() {
    static const Module module(builtModule("component.dll"));
    return module;
}

// What a creation gave, and what became of the out-address.
struct Outcome {
    TarvoResult result;
    enum { untouched, null, instance } out;

    bool operator==(const Outcome&) const = default;
};

inline Outcome create(Details& details, std::uint32_t flags = 0) {
    IVaskInterface before{};
    IVaskInterface* instance = &before;
    const TarvoResult result = TARVO::createInstance(details.pair, flags, &instance);
    if (instance == &before)
        return {result, Outcome::untouched};
    if (instance == nullptr)
        return {result, Outcome::null};
    instance->table->release(instance->me);
    return {result, Outcome::instance};
}

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << outcome.result
         << (outcome.out == Outcome::untouched ? " untouched"
             : outcome.out == Outcome::null    ? " null"
                                               : " instance");
}

// The marshal library, which is looked for until it is there.
inline const Module& marshalLibrary() {
    static const Module module = [] {
        TARVO::platform::removeFile(besideProgram(u"TARVOMarshal.dll"));
        Details details;
        details.locations = {{0, u"32.dll"}};
        EXPECT_EQ(create(details), Outcome(RC_UNSPECIFIED, Outcome::null));
        EXPECT_TRUE(TARVO::platform::copyFileOver(builtModule("marshal.dll"),
                                                  besideProgram(u"TARVOMarshal.dll")));
        return Module(besideProgram(u"TARVOMarshal.dll"));
    }();
    return module;
}

inline const Module& comBridge() {
    static const Module module = [] {
        EXPECT_TRUE(TARVO::platform::copyFileOver(builtModule("component.dll"),
                                                  besideProgram(u"MORVEN.dll")));
        return Module(besideProgram(u"MORVEN.dll"));
    }();
    return module;
}

} // namespace tests
