#include "tests/support/apartment.h"

namespace support {

JoinedApartment::JoinedApartment(TARVO::platform::Apartment) {}
JoinedApartment::~JoinedApartment() = default;

} // namespace support
