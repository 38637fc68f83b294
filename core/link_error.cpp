#include "core/link_error.h"

#include "core/result_text.h"
#include "platform/text.h"
#include "tarvo/error.h"
#include "tarvo/text.hpp"

namespace TARVO {

namespace {

// Puts the answer of one of the error's text slots in the place of a marker. An error may answer
// RC_SEE_LAST_ERROR for a text that it can't give.
void replaceMarker(std::u16string& message, std::u16string_view marker, IVaskError& error,
                   TarvoResult (*slot)(void*, IVaskString*), std::u16string_view unknown,
                   tarvo::String& text) {
    const std::size_t position = message.find(marker);
    if (position == std::u16string::npos)
        return;
    const bool given = slot(error.me, text.pair()) != RC_SEE_LAST_ERROR;
    message.replace(position, marker.size(), given ? std::u16string_view(text.text()) : unknown);
}

void appendErrorText(std::u16string& message, IVaskError& error, tarvo::String& text) {
    if (error.table->getErrorText(error.me, text.pair()) == RC_SEE_LAST_ERROR) {
        message.append(u"Failed to obtain error text").append(u"; ");
        text.text() = textOfResult(RC_SEE_LAST_ERROR);
    }
    message.append(text.text());
}

// A caller's own error may be its own cause.
constexpr int kMostLinks = 100;

// The error's cause, or nothing where the chain ends or can't be followed.
tarvo::Reference<IVaskError> causeOf(IVaskError& error) {
    IVaskError* stored = nullptr;
    const Result result = error.table->getCause(error.me, &stored);
    auto cause = tarvo::Reference<IVaskError>::adopt(stored);
    return result == RC_OK ? cause : nullptr;
}

} // namespace

vask_link_error::vask_link_error(Result code, IVaskInterface* object) : code_(code) {
    if (code == RC_SEE_LAST_ERROR && object != nullptr)
        object->table->getLastError(object->me, error_.out());
}

vask_link_error::vask_link_error(std::u16string_view description)
    : description_(description), code_(RC_SEE_LAST_ERROR) {}

vask_link_error::vask_link_error(const std::exception& cause) : code_(RC_SEE_LAST_ERROR) {
    platform::appendUtf16(cause.what(), description_);
}

vask_link_error::vask_link_error(const vask_link_error& other)
    : std::exception(other), error_(other.error_), description_(other.description_),
      message_(other.message_), code_(other.code_) {}

const std::u16string& vask_link_error::description() const {
    if (!description_.empty())
        return description_;
    tarvo::String text;
    if (code_ == RC_SEE_LAST_ERROR && error_)
        appendErrorText(description_, *error_, text);
    else
        description_ = textOfResult(code_);
    return description_;
}

const std::u16string& vask_link_error::message() const {
    if (!message_.empty())
        return message_;
    if (code_ != RC_SEE_LAST_ERROR || !error_)
        return description();

    tarvo::String text;
    auto error = error_;
    for (int link = 0; error && link < kMostLinks; ++link) {
        message_.append(u"in %SCOPE% of %SOURCE%");
        replaceMarker(message_, u"%SCOPE%", *error, error->table->getScope, u"<unknown scope>",
                      text);
        replaceMarker(message_, u"%SOURCE%", *error, error->table->getSource, u"<unknown source>",
                      text);
        message_.append(u": ");
        appendErrorText(message_, *error, text);
        error = causeOf(*error);
        if (error)
            message_.append(u", ").append(u"caused by: ");
    }
    return message_;
}

const char* vask_link_error::what() const noexcept {
    try {
        if (!utf8_) {
            auto utf8 = std::make_unique<std::string>();
            platform::appendUtf8(message(), *utf8);
            utf8_ = std::move(utf8);
        }
        return utf8_->c_str();
    } catch (...) {
        return "vask_link_error"; // no memory for the message
    }
}

} // namespace TARVO
