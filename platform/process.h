// The calling thread and its process.
#pragma once

#include <chrono>

namespace TARVO::platform {

// Lets the calling thread rest for at least this long.
void pauseFor(std::chrono::milliseconds time);

// Whether the process runs with the rights of an administrator. False also if that can't be told.
bool isElevated();

// The same, for one whose user also has a token of lesser rights, which has been left behind.
bool hasFullElevation();

// Whether the process runs under Wine, where every process counts as elevated.
bool isWine();

// How the calling thread takes part in COM.
enum class Apartment {
    none, // it has not joined an apartment itself, or it is in one that belongs to no thread
    singleThreaded,
    multiThreaded,
};
Apartment currentApartment();

} // namespace TARVO::platform
