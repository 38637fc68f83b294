#include "companions/idl-parser/errors.h"

#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace TARVO::idl {
namespace {

void appendPlace(Place place, std::u16string& text) {
    const std::string numbers =
        ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + ": ";
    text.append(numbers.begin(), numbers.end());
}

} // namespace

void Errors::add(const SourceFile& file, std::string_view piece, std::string message) {
    if (errors_.size() == kMost) {
        tooMany_ = true;
        throw TooManyErrors();
    }
    errors_.push_back({&file, piece, std::move(message)});
}

void Errors::addFatal(std::u16string_view path, std::string_view message) {
    fatal_.assign(path).append(path.empty() ? u"" : u": ");
    platform::appendUtf16(message, fatal_);
}

std::u16string Errors::text() const {
    std::vector<Error> inOrder = errors_;
    std::stable_sort(inOrder.begin(), inOrder.end(), [](const Error& left, const Error& right) {
        return left.file == right.file ? left.piece.data() < right.piece.data()
                                       : left.file->number < right.file->number;
    });
    std::u16string text = fatal_;
    for (const Error& error : inOrder) {
        text.append(text.empty() ? u"" : u"\n").append(error.file->path);
        appendPlace(error.file->placeOf(error.piece), text);
        platform::appendUtf16(error.message, text);
    }
    if (tooMany_)
        text += u"\nThere are more errors behind these.";
    return text;
}

} // namespace TARVO::idl
