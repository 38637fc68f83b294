// Threads in the apartments of COM, where there are any.
#pragma once

#include "platform/process.h"

namespace support {

#ifdef _WIN32
inline constexpr bool kHasApartments = true;
#else
inline constexpr bool kHasApartments = false;
#endif

// Makes the calling thread join an apartment of this kind, and leaves it again. `none` does
// neither.
class JoinedApartment {
  public:
    explicit JoinedApartment(TARVO::platform::Apartment kind);
    JoinedApartment(const JoinedApartment&) = delete;
    JoinedApartment& operator=(const JoinedApartment&) = delete;
    ~JoinedApartment();

  private:
    bool joined_ = false;
};

} // namespace support
