// What the parser that stands in for the real one is to give. The library passes the name of a
// definition on without a look at it, so the test passes the address of this in its place.
#pragma once

#include <tarvo/base.h>
#include <tarvo/result.h>

#include <string>
#include <vector>

struct ScenarioItem {
    TarvoUUID id;
    std::u16string name;
    std::int32_t templateArguments = 0;
};

struct ScenarioLibrary {
    TarvoUUID id;
    std::u16string name;
    std::u16string version; // empty: getAttribute fails
    std::u16string path;
    std::vector<ScenarioItem> categories;
    std::vector<ScenarioItem> enumerations;
    std::vector<ScenarioItem> interfaces;
};

struct Scenario {
    std::u16string message;
    std::vector<ScenarioLibrary> libraries;
    TarvoResult libraryResult = RC_OK;   // of getLibrary
    TarvoResult interfaceResult = RC_OK; // of getInterface
    bool givesInterfaces = true;

    int objectsAlive = 0; // out: parse results and libraries that are still referenced
};
