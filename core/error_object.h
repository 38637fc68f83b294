// The error object behind RC_SEE_LAST_ERROR, and the way in which an object records one. Each
// object that a failure passes adds a link, so that the chain tells the whole road of it.
#pragma once

#include "core/link_error.h"
#include "tarvo/error.h"
#include "tarvo/reference.hpp"

#include <string_view>

namespace TARVO {

// Makes an error: what happened, which object failed, in which operation, and what caused it. The
// texts are copied and a reference is added to the cause, which may be null.
tarvo::Reference<IVaskError> makeError(std::u16string_view text, std::u16string_view source,
                                       std::u16string_view scope, IVaskError* cause);

// Puts a new error for the exception into an object's last-error reference. `source` names the
// object, `scope` the operation.
void recordError(tarvo::Reference<IVaskError>& lastError, std::u16string_view source,
                 std::u16string_view scope, const vask_link_error& exception);

} // namespace TARVO
