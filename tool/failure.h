// What a command raises when it can't do its work.
#pragma once

#include "tarvo/base.h"
#include "tarvo/result.h"

#include <stdexcept>
#include <string>

namespace tool {

class Failure : public std::runtime_error {
  public:
    // The message says what was tried; the code, if there is one, why it failed.
    explicit Failure(const std::string& message, TarvoResult code = RC_OK)
        : std::runtime_error(message), code_(code) {}

    TarvoResult code() const noexcept { return code_; }

  private:
    TarvoResult code_;
};

} // namespace tool
