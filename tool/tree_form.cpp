#include "tool/tree_form.h"

#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace tool {

namespace {

// A line has 79 columns, of which this many are for what stands on the left.
constexpr std::size_t kLeft = 62;

// Deep trees stop moving to the right: the text would grow with the square of the depth.
std::string indent(std::size_t depth) {
    constexpr std::size_t kMostLevels = 20;
    return std::string(2 * std::min(depth, kMostLevels), ' ');
}

// Padding goes by the columns that characters take up, so it tells whether there was room.
bool fits(const std::string& left) {
    return fmt::formatted_size("{:<{}}", left, kLeft + 1) > left.size();
}

} // namespace

void TreeLines::addValue(std::string_view name, const std::optional<std::string>& content,
                         std::string_view about) {
    const auto writeLine = [&](const std::string& left) {
        fmt::format_to(std::back_inserter(text_), "{:<{}} {}\n", left, kLeft, about);
    };
    const std::string left = indent(depth_) + printable(name);
    if (!content)
        return writeLine(left);
    const std::string whole = left + " = " + *content;
    if (fits(whole))
        return writeLine(whole);
    writeLine(left + " =");
    text_.append(indent(depth_ + 1)).append(*content).push_back('\n');
}

void TreeLines::beginNode(std::string_view name) {
    text_.append(indent(depth_)).append(printable(name)).append("/\n");
    ++depth_;
}

void TreeJson::setValues(nlohmann::ordered_json::object_t values) {
    const nlohmann::ordered_json object(std::move(values));
    text_.append(R"({"values":)").append(object.dump()).append(",\"");
    text_.append(nodesName_).append("\":{");
    isFirst_ = true;
}

void TreeJson::beginNode(const std::string& name) {
    if (!isFirst_)
        text_.push_back(',');
    text_.append(nlohmann::json(name).dump()).push_back(':');
}

void TreeJson::endNode() {
    text_.append("}}");
    isFirst_ = false;
}

} // namespace tool
