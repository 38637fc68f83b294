// The reader of definitions on arbitrary files: it must take all of them, every error must have its
// place, and what it has understood, written down again, must be understood in the same way.
//
// An input is some files, each named by the one character that is its number from '0' on; a form
// feed stands between them. The first is the definition.
#include "companions/idl-parser/definition.h"
#include "platform/text.h"
#include "tests/support/definition_text.h"

#include <tarvo/reference.hpp>
#include <tarvo/text.hpp>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using TARVO::idl::Document;
using Files = std::vector<std::string>;

Files split(std::string_view input) {
    Files files;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = input.find('\f');
        files.emplace_back(input.substr(0, end));
        input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    }
    return files;
}

tarvo::Reference<Document> parse(const Files& files) {
    const auto read = [&](const std::u16string& path) -> TARVO::idl::FileBytes {
        const std::size_t number =
            path.size() == 1 && path[0] >= u'0' ? path[0] - u'0' : files.size();
        if (number >= files.size())
            return {{}, "the file is not there", true};
        return {files[number], nullptr, false};
    };
    return tarvo::Reference<Document>::adopt(TARVO::idl::readDefinition(u"0", read));
}

void fail(const char* reason, const std::string& text) {
    std::fprintf(stderr, "%s:\n%s\n", reason, text.c_str());
    std::abort();
}

// "2:15:4: something", and no more lines than there may be.
void checkErrors(const std::string& errors) {
    std::size_t lines = 0;
    for (std::size_t start = 0; start < errors.size(); ++lines) {
        const std::size_t end = std::min(errors.find('\n', start), errors.size());
        const std::string line = errors.substr(start, end - start);
        unsigned lineNumber = 0;
        unsigned column = 0;
        const bool hasPlace = std::sscanf(line.c_str(), "%*c:%u:%u: ", &lineNumber, &column) == 2;
        if (!hasPlace && lines < 20)
            fail("An error without a place", errors);
        start = end + 1;
    }
    if (lines > 21)
        fail("Too many errors", errors);
}

std::string messageOf(const Document& document) {
    std::u16string text;
    tarvo::StringWrapper wrapper(text);
    document.getErrorMessage(wrapper.pair());
    std::string message;
    TARVO::platform::appendUtf8(text, message);
    return message;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto document = parse(split(std::string_view(reinterpret_cast<const char*>(data), size)));
    const std::string message = messageOf(*document);
    if (!message.empty()) {
        checkErrors(message);
        return 0;
    }
    const std::string text = tests::definitionText(document->pair());
    if (document->getImportedLibraryCount() != 0)
        return 0; // it can't be read without the files that it imports
    const std::string again = tests::definitionText(parse({text})->pair());
    if (again != text)
        fail("Read differently the second time", text + "\n----\n" + again);
    return 0;
}
