// The one exception that the library's code raises for a failure that has a result code. It never
// crosses the boundary: slots and exports turn it into its code, and into a last error where the
// object keeps one.
#pragma once

#include "tarvo/base.h"
#include "tarvo/error.h"
#include "tarvo/reference.hpp"
#include "tarvo/result.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace TARVO {

class vask_link_error : public std::exception {
  public:
    // A slot's failure. Code 1 brings along the last error of the object that failed, if one is
    // given; what its getLastError answers is not looked at.
    explicit vask_link_error(Result code, IVaskInterface* object = nullptr);

    // A failure that only a text can tell; the code is RC_SEE_LAST_ERROR.
    explicit vask_link_error(std::u16string_view description);

    // A failure of the language's library; the description is its text, read as UTF-8.
    explicit vask_link_error(const std::exception& cause);

    vask_link_error(const vask_link_error& other);
    vask_link_error& operator=(const vask_link_error&) = delete;
    ~vask_link_error() override = default;

    // The whole message in UTF-8, valid for as long as the exception lives.
    const char* what() const noexcept override;

    Result code() const noexcept { return code_; }
    const tarvo::Reference<IVaskError>& error() const noexcept { return error_; }

    // What went wrong, without the chain of causes.
    const std::u16string& description() const;

    // What went wrong, where, and what caused it, through the whole chain of errors.
    const std::u16string& message() const;

  private:
    mutable std::unique_ptr<std::string> utf8_; // made when it is first asked for
    tarvo::Reference<IVaskError> error_;
    mutable std::u16string description_;
    mutable std::u16string message_;
    Result code_;
};

// Raises the exception for a result that isn't 0, with the object that gave it.
inline void require(Result result, IVaskInterface* object = nullptr) {
    if (result != RC_OK)
        throw vask_link_error(result, object);
}

} // namespace TARVO
