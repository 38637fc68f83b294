// The one exception of the C++ layer: the code of the slot that failed, and the chain of errors that
// the failing object tells of.
#pragma once

#include "encoding.hpp"
#include "error.h"
#include "reference.hpp"
#include "result.hpp"
#include "text.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace tarvo {

// One link of the chain. A text that the error can't give reads "not known".
//
//     const tarvo::Cause cause = {u"too loud", u"horn", u"play"};
//     std::cerr << tarvo::Error(RC_SEE_LAST_ERROR, "play", {cause}).what() << '\n';
//     // play: too loud (horn, play): RC_SEE_LAST_ERROR (1)
struct Cause {
    std::u16string text;   // what went wrong
    std::u16string source; // the object that failed
    std::u16string scope;  // the operation that failed
};

// Its code() is of resultCategory(); its what() names the call that failed, what the causes tell,
// and the code, in one line of UTF-8.
//
//     try {
//         tarvo::RegistryKey::open(u"/no/such/key");
//     } catch (const tarvo::Error& error) {
//         std::cerr << error.what() << '\n';
//         for (const tarvo::Cause& cause : error.causes())
//             std::cerr << "  " << tarvo::toUtf8(cause.text) << '\n';
//     }
class Error : public std::system_error {
  public:
    Error(TarvoResult result, std::string_view call, std::vector<Cause> causes = {})
        : std::system_error(errorOf(result), describe(call, causes)),
          causes_(std::make_shared<const std::vector<Cause>>(std::move(causes))) {}

    TarvoResult result() const noexcept { return static_cast<TarvoResult>(code().value()); }

    // From the object that was called to the one where the failure began; often empty.
    const std::vector<Cause>& causes() const noexcept { return *causes_; }

  private:
    static std::string describe(std::string_view call, const std::vector<Cause>& causes) {
        std::string text(call);
        for (const Cause& cause : causes)
            text.append(": ")
                .append(toUtf8(cause.text))
                .append(" (")
                .append(toUtf8(cause.source))
                .append(", ")
                .append(toUtf8(cause.scope))
                .append(")");
        std::ranges::replace_if(
            text, [](char byte) { return byte == '\n' || byte == '\r'; }, ' ');
        return text;
    }

    std::shared_ptr<const std::vector<Cause>> causes_; // an exception is copied without raising
};

// The chain that begins with an error; null is an empty one. No chain is followed further than a
// hundred errors, so that one which leads back into itself ends.
inline std::vector<Cause> causesFrom(Reference<IVaskError> error) {
    constexpr std::size_t kMost = 100;
    std::vector<Cause> causes;
    while (error && causes.size() < kMost) {
        const auto text = [&](TarvoResult (*slot)(void*, IVaskString*)) {
            String told;
            return slot(error->me, told.pair()) == RC_OK ? std::move(told.text()) : u"not known";
        };
        const IVaskErrorTable& table = *error->table;
        causes.push_back({text(table.getErrorText), text(table.getSource), text(table.getScope)});
        IVaskError* cause = nullptr;
        if (table.getCause(error->me, &cause) != RC_OK)
            break;
        error = Reference<IVaskError>::adopt(cause);
    }
    return causes;
}

// What an object with a getLastError tells of its last failure.
template <class Pair>
std::vector<Cause> lastErrorOf(Pair& object) {
    IVaskError* error = nullptr;
    if (object.table->getLastError(object.me, &error) != RC_OK)
        return {};
    return causesFrom(Reference<IVaskError>::adopt(error));
}

// Raises Error unless the result is RC_OK.
inline void require(TarvoResult result, std::string_view call) {
    if (result != RC_OK)
        throw Error(result, call);
}

// The same for a call of an object that keeps its last error.
template <class Pair>
void require(TarvoResult result, std::string_view call, Pair& object) {
    if (result == RC_SEE_LAST_ERROR)
        throw Error(result, call, lastErrorOf(object));
    require(result, call);
}

// The text of a code for people, given the library's own function for it.
inline std::u16string textOfResult(TarvoResult result,
                                   getErrorDescriptionFunction& getErrorDescription) {
    String text;
    require(getErrorDescription(result, text.pair()), "getErrorDescription");
    return std::move(text.text());
}

} // namespace tarvo
