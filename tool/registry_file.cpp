#include "tool/registry_file.h"

#include "platform/file.h"
#include "platform/process.h"
#include "registry/registry_file.h"
#include "registry/registry_parser.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <vector>

namespace tool {

namespace {

using TARVO::TarvoRegistry;
using TARVO::platform::FileError;

[[noreturn]] void failToRead(const std::u16string& path, FileError error) {
    const std::string attempt = "cannot read " + toUtf8(path);
    switch (error) {
    case FileError::accessDenied:
        throw Failure(attempt, RC_ACCESS_DENIED);
    case FileError::sharingViolation:
        throw Failure(attempt + ": another program is writing it; try again when it has finished");
    default:
        throw Failure(attempt, RC_UNSPECIFIED);
    }
}

// A commit holds a file for moments only; one that stays held for long is worth a message.
TARVO::platform::OpenedFile openPatiently(const std::u16string& path) {
    using namespace std::chrono_literals;
    constexpr int kAttempts = 50;
    Progress::say("Reading " + toUtf8(path));
    TARVO::platform::OpenedFile opened = TARVO::platform::File::openForReading(path);
    for (int i = 1; i < kAttempts && opened.error == FileError::sharingViolation; ++i) {
        TARVO::platform::pauseFor(100ms);
        opened = TARVO::platform::File::openForReading(path);
    }
    return opened;
}

// "<registry/>", which somebody wrote by hand.
bool isEmptyElement(std::string_view bytes) {
    const std::size_t start = bytes.find("<registry");
    return start != std::string_view::npos && bytes.find('>', start) == bytes.find("/>", start) + 1;
}

FileFault locate(const TARVO::MarkupFault& fault, std::string_view bytes) {
    const auto [line, column] = placeOf(bytes, fault.offset);
    return {.line = line, .column = column, .reason = fault.reason};
}

} // namespace

RegistryFile readRegistryFile(const std::u16string& path) {
    RegistryFile result;
    result.root = TarvoRegistry::makeRoot();
    TARVO::platform::OpenedFile opened = openPatiently(path);
    if (opened.error == FileError::notFound || opened.error == FileError::pathNotFound)
        return result;
    if (opened.error != FileError::none)
        failToRead(path, opened.error);
    result.isThere = true;
    TARVO::FileBytes read(opened.file);
    if (!read.readAll())
        failToRead(path, FileError::other);
    const std::string_view bytes = read.view();
    TARVO::RegistryParser parser(result.root, {});
    if (parser.parse(bytes) == TARVO::ParseOutcome::malformed) {
        result.root = nullptr;
        result.fault = locate(parser.fault(), bytes);
    } else {
        result.isBlank = bytes.empty();
        result.isCutOff = !result.isBlank && TARVO::isCutOff(bytes) && !isEmptyElement(bytes);
    }
    return result;
}

std::string describeFault(std::u16string_view path, const FileFault& fault) {
    return fmt::format("{}:{}:{}: {}", toUtf8(path), fault.line, fault.column, fault.reason);
}

std::string describeContent(const RegistryFile& file) {
    std::size_t keys = 0;
    std::size_t values = 0;
    std::vector<const TarvoRegistry*> ahead{file.root.get()};
    while (!ahead.empty()) {
        const TarvoRegistry& key = *ahead.back();
        ahead.pop_back();
        keys += key.subKeys.size();
        values += key.values.size();
        key.subKeys.forEach([&](const TarvoRegistry& child) { ahead.push_back(&child); });
    }
    const char* state = !file.isCutOff       ? "well-formed"
                        : keys + values == 0 ? "without a registry"
                                             : "cut off";
    return fmt::format("{}, keys: {}, values: {}", state, keys, values);
}

std::string describeState(const RegistryFile& file) {
    if (!file.isThere)
        return "not there yet";
    if (file.fault)
        return fmt::format("malformed in line {}: {}", file.fault->line, file.fault->reason);
    return describeContent(file);
}

} // namespace tool
