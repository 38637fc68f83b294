#include "tool/json_file.h"

#include "platform/file.h"
#include "registry/registry_file.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

std::string readFile(const std::string& path) {
    Progress::say("Reading " + path);
    TARVO::platform::OpenedFile opened = TARVO::platform::File::openForReading(toUtf16(path));
    TARVO::FileBytes bytes(opened.file);
    if (opened.error != TARVO::platform::FileError::none || !bytes.readAll())
        throw Failure("cannot read " + path);
    return std::string(bytes.view());
}

nlohmann::json readJson(const std::string& path) {
    const std::string bytes = readFile(path);
    try {
        return nlohmann::json::parse(bytes);
    } catch (const nlohmann::json::parse_error& error) {
        const TextPlace place = placeOf(bytes, error.byte > 0 ? error.byte - 1 : 0);
        throw Failure(
            fmt::format("{}:{}:{}: no JSON from here on", path, place.line, place.column));
    }
}

} // namespace tool
