#include "core/error_object.h"

#include "core/object.h"
#include "core/slot.h"
#include "tarvo/text.hpp"

#include <string>

namespace TARVO {

namespace {

class VaskError final : public TarvoBaseImpl<VaskError, IVaskError> {
  public:
    VaskError(std::u16string_view text, std::u16string_view source, std::u16string_view scope,
              IVaskError* cause)
        : TarvoBaseImpl(&kTable), text_(text), scope_(scope), source_(source),
          cause_(tarvo::Reference<IVaskError>::share(cause)) {}

    Result getErrorText(IVaskString* text) { return give(text, text_); }
    Result getSource(IVaskString* source) { return give(source, source_); }
    Result getScope(IVaskString* scope) { return give(scope, scope_); }
    Result getCause(IVaskError** cause) {
        if (cause == nullptr)
            return RC_NULL_POINTER;
        *cause = tarvo::Reference(cause_).detach();
        return RC_OK;
    }

  private:
    static Result give(IVaskString* target, const std::u16string& text) {
        return target == nullptr ? RC_NULL_POINTER : tarvo::setText(target, text);
    }

    static const IVaskErrorTable kTable;

    std::u16string text_;
    std::u16string scope_;
    std::u16string source_;
    tarvo::Reference<IVaskError> cause_;
};

constinit const IVaskErrorTable VaskError::kTable = {
    .addReference = slot<VaskError, &VaskError::addReference>,
    .release = slot<VaskError, &VaskError::release>,
    .getErrorText = slot<VaskError, &VaskError::getErrorText>,
    .getCause = slot<VaskError, &VaskError::getCause>,
    .getSource = slot<VaskError, &VaskError::getSource>,
    .getScope = slot<VaskError, &VaskError::getScope>,
};

} // namespace

tarvo::Reference<IVaskError> makeError(std::u16string_view text, std::u16string_view source,
                                       std::u16string_view scope, IVaskError* cause) {
    tarvo::Reference<IVaskError> error;
    handOut(makeObject<VaskError>(text, source, scope, cause), error.out());
    return error;
}

void recordError(tarvo::Reference<IVaskError>& lastError, std::u16string_view source,
                 std::u16string_view scope, const vask_link_error& exception) {
    IVaskError* cause = exception.error().get();
    const std::u16string_view text =
        cause != nullptr ? std::u16string_view(u"VASK-LINK error") : exception.description();
    lastError = makeError(text, source, scope, cause);
}

} // namespace TARVO
