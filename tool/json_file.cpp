#include "tool/json_file.h"

#include "platform/file.h"
#include "registry/registry_file.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

std::string readFile(const std::string& path) {
    Progress::say("Reading " + path);
    platform::OpenedFile opened = platform::File::openForReading(toUtf16(path));
    TARVO::FileBytes bytes(opened.file);
    if (opened.error != platform::FileError::none || !bytes.readAll())
        throw Failure("cannot read " + path);
    return std::string(bytes.view());
}

nlohmann::json readJson(const std::string& path) {
    const std::string bytes = readFile(path);
    try {
        return nlohmann::json::parse(bytes);
    } catch (const nlohmann::json::parse_error& error) {
        const std::string_view before =
            std::string_view(bytes).substr(0, error.byte > 0 ? error.byte - 1 : 0);
        const std::size_t lineStart = before.rfind('\n') + 1; // 0 in the first line
        throw Failure(fmt::format("{}:{}:{}: no JSON from here on", path,
                                  std::ranges::count(before, '\n') + 1,
                                  before.size() - lineStart + 1));
    }
}

} // namespace tool
