// The two forms in which every tree is shown, of the registry and of saved state: indented lines
// for people, JSON for programs. Whoever walks a tree tells them of what it meets, so that a deeper
// tree needs no more stack.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// Nodes end in a slash and what is in them is indented:
//
//     components/
//       flags = 0                                                    integer  machine
class TreeLines {
  public:
    // A value of the node that was begun last: what it holds, if anything, and what else there is
    // to tell, which stands on the right.
    void addValue(std::string_view name, const std::optional<std::string>& content,
                  std::string_view about);
    void beginNode(std::string_view name);
    void endNode() { --depth_; }

    std::string take() { return text_.empty() ? "(empty)\n" : std::move(text_); }

  private:
    std::string text_;
    std::size_t depth_ = 0;
};

// {"values": {...}, "nodes": {name: the same again}}, with a name of its own for "nodes". It is
// written one object into the other here, since nlohmann's own writer recurses into them.
class TreeJson {
  public:
    explicit TreeJson(std::string_view nodesName) : nodesName_(nodesName) {}

    // Comes for every node first, for the root without a `beginNode`. The members' names differ, so
    // callers append them: a look-up in such an object goes through all that it has.
    void setValues(nlohmann::ordered_json::object_t values);
    void beginNode(const std::string& name);
    void endNode();

    std::string take() { return std::move(text_.append("\n")); }

  private:
    std::string text_;
    std::string nodesName_;
    bool isFirst_ = true; // of the nodes in the one that was begun last
};

} // namespace tool
