// A measurement of something that went wrong is none.
#pragma once

#include <cstdlib>

namespace bench {

inline void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace bench
