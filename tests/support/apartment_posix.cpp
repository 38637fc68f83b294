#include "tests/support/apartment.h"

namespace support {

JoinedApartment::JoinedApartment(platform::Apartment) {}
JoinedApartment::~JoinedApartment() = default;

} // namespace support
