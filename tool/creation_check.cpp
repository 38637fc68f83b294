#include "tool/creation_check.h"

#include "core/link_error.h"
#include "instantiation/remote_location.h"
#include "platform/module.h"
#include "platform/process.h"
#include "tarvo/instantiation.h"
#include "tarvo/marshal.h"
#include "tarvo/text.hpp"
#include "tool/component.h"
#include "tool/module_facts.h"
#include "tool/report.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

namespace {

// What is in the way of a creation, and what the reader can do about it.
struct Obstacle {
    std::string what;
    std::string advice;
};

class CreationCheck {
  public:
    CreationCheck(const Library& library, IVaskPMCRegistrationDetails& details, std::uint32_t flags)
        : library_(library), details_(details), flags_(flags) {}

    void run() {
        printHeading(fmt::format("Creation in a process like this one, with flags {}", flags_));
        try {
            const char* route = findRoute();
            printVerdict(fmt::format("It would be created {}.", route), "");
        } catch (const Obstacle& obstacle) {
            printVerdict("It would not be created: " + obstacle.what + ".", obstacle.advice);
        }
    }

  private:
    // The steps are those of the library, in its order.
    const char* findRoute() {
        checkRights();
        if (flags_ > TARVO_CREATE_ALLOW_APARTMENT_IN_CALLER)
            throw Obstacle{"the only creation flag is 1 (RC_INVALID_ARGUMENT)", ""};
        const std::uint32_t location = decidingLocation();
        switch (location) {
        case TARVO_LOCATION_INPROC64:
            return nativeRoute();
        case TARVO_LOCATION_COM64:
            return comRoute();
        case TARVO_LOCATION_REMOTE:
            checkUrl();
            [[fallthrough]];
        default:
            return marshalRoute();
        }
    }

    void checkRights() const {
        if (!TARVO::platform::isElevated())
            return printStep("rights", "not elevated, so components of either scope are allowed");
        if (TARVO::platform::isWine())
            return printStep("rights", "elevated as every process under Wine; all are allowed");
        std::uint32_t allUsers = 0;
        details_.table->isLocationAllUsers(details_.me, TARVO_LOCATION_INPROC64, &allUsers);
        if (allUsers != 0)
            return printStep("rights",
                             "elevated; it is registered for all users, so it is allowed");
        printStep("rights", "elevated; it has no Inproc64 location in the machine scope");
        throw Obstacle{"an elevated process creates only what stands in the machine scope alone, "
                       "with an Inproc64 location (RC_ELEVATION_REFUSED)",
                       "Register it with --scope machine and remove the user's registration, or "
                       "start the host without administrator's rights."};
    }

    std::uint32_t decidingLocation() {
        constexpr std::uint32_t kOrder[] = {TARVO_LOCATION_INPROC64, TARVO_LOCATION_COM64,
                                            TARVO_LOCATION_INPROC32, TARVO_LOCATION_COM32,
                                            TARVO_LOCATION_LOCAL,    TARVO_LOCATION_REMOTE};
        for (const std::uint32_t location : kOrder) {
            if (details_.table->getLocation(details_.me, location, text_.pair()) != RC_OK)
                continue;
            printStep("location", fmt::format("{} decides: {}", kLocationNames[location],
                                              toUtf8(text_.text())));
            return location;
        }
        throw Obstacle{"it has no location (RC_CANNOT_CREATE)",
                       "Register it again with a location."};
    }

    std::uint32_t componentFlags() const {
        std::uint32_t flags = 0;
        if (details_.table->getFlags(details_.me, &flags) != RC_OK ||
            flags > TARVO_PMC_APARTMENT_THREADED)
            throw Obstacle{"its flags can't be read or aren't known (RC_CANNOT_CREATE)",
                           "Register it again; flags are 0 or 1."};
        return flags;
    }

    const char* nativeRoute() const {
        if (componentFlags() != 0 && flags_ == 0) {
            printStep("apartment", "it is bound to an apartment, and the flags don't allow that in "
                                   "the calling thread, so a service creates it");
            return marshalRoute();
        }
        checkLibrary(text_.text(), "RC_CANNOT_CREATE", {"vaskCreateObject"});
        return "in this process, by its own library";
    }

    const char* comRoute() const {
        componentFlags();
        const TARVO::platform::Apartment apartment = TARVO::platform::currentApartment();
        const bool inProcess =
            apartment == TARVO::platform::Apartment::multiThreaded ||
            (apartment == TARVO::platform::Apartment::singleThreaded && flags_ != 0);
        printStep("apartment",
                  inProcess ? "the calling thread's apartment lets it live in this process"
                            : "the calling thread is in no apartment that lets it live in this "
                              "process, so a service creates it; threads of a host may differ");
        if (!inProcess)
            return marshalRoute();
        checkLibrary(besideLibrary("MORVEN.dll"), "RC_CANNOT_CREATE", {"vaskCreateObject"});
        return "in this process, through the COM bridge";
    }

    const char* marshalRoute() const {
        checkLibrary(besideLibrary("TARVOMarshal.dll"), "RC_UNSPECIFIED",
                     {TARVO_MARSHAL_ENTRY_POINTS});
        return "by a service of the marshal library, if that reaches it";
    }

    void checkUrl() const try {
        TARVO::parseRemoteLocation(text_.text());
    } catch (const TARVO::vask_link_error&) {
        throw Obstacle{"the location isn't tarvo://HOST:PORT (RC_BAD_LOCATION)",
                       "Register it again with a URL of that form."};
    }

    std::u16string besideLibrary(const char* name) const {
        return toUtf16(library_.folder() + name);
    }

    // `code` is that of the failure.
    static void checkLibrary(const std::u16string& path, const char* code,
                             std::initializer_list<const char*> entryPoints) {
        checkFile(path, code);
        const TARVO::platform::LoadedModule module(path);
        if (!module)
            throw Obstacle{fmt::format("the system can't load the library: {} ({})",
                                       systemText(module.error().text), code),
                           "Install what it needs, beside the host or where the system looks."};
        printStep("loading", "the system loads it");
        for (const char* name : entryPoints)
            if (module.find(name) == nullptr)
                throw Obstacle{fmt::format("the library has no entry point {} ({})", name, code),
                               "Export a function of exactly this name, in C linkage."};
        printStep("entry point", fmt::format("{} is there", *entryPoints.begin()));
    }

    static void checkFile(const std::u16string& path, const char* code) {
        const ModuleFacts facts = examineModule(path);
        if (!facts.exists)
            throw Obstacle{fmt::format("there is no file {} ({})", toUtf8(path), code),
                           "Put the file there, or register the component where it is."};
        printStep("file", toUtf8(path) + ": " + facts.kind);
        if (!facts.fits)
            throw Obstacle{fmt::format("the file is no library for this system ({})", code),
                           "It must be a 64-bit library for this system and machine."};
        for (const std::string& import : facts.imports)
            checkImport(import, code);
    }

    static void checkImport(const std::string& name, const char* code) {
        if (!TARVO::platform::LoadedModule(toUtf16(name)))
            throw Obstacle{
                fmt::format("the library needs {}, which can't be loaded ({})", name, code),
                "Install it beside the host or where the system looks."};
    }

    const Library& library_;
    IVaskPMCRegistrationDetails& details_;
    std::uint32_t flags_;
    tarvo::String text_;
};

} // namespace

void checkCreation(const Library& library, IVaskPMCRegistrationDetails& details,
                   std::uint32_t flags) {
    CreationCheck(library, details, flags).run();
}

} // namespace tool
