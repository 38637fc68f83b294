// The component that the benchmark of creations registers and creates.
#pragma once

#include <tarvo/uuid.hpp>

namespace bench {

constexpr auto kNothing = tarvo::UUID::parse(u"{5d0d6a3e-5b60-4c42-9a58-0a2f6c2f9b11}").value();

} // namespace bench
