// Turns the bytes of a registry file into a tree:
//
//   <registry id="{...}">
//    <value name="answer" type="integer">42</value>
//    <key name="a">
//     <value name="b" type="string">c</value>
//    </key>
//   </registry>
//
// Types are string, integer, uuid and empty. Unknown elements are skipped whole, text outside
// values is ignored, and so is what stands behind the end of `registry`. A name must be lower case
// from A to Z and hold no separator and no control character; each stands once in its key. The id
// is the file's change stamp: a parse that comes upon the id that the caller knows ends there.
#pragma once

#include "registry/file_text.h"
#include "registry/markup.h"
#include "registry/tree.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TARVO {

enum class ParseOutcome : std::uint8_t {
    complete,
    malformed,
    unchanged, // the file's id is the one that is known
};

// Where and why a file is malformed, for people.
struct MarkupFault {
    std::size_t offset = 0; // in bytes, of the tag that can't be accepted
    const char* reason = "";
};

class RegistryParser {
  public:
    // `root` is new, and is filled with keys of its edition. An empty `knownId` is no file's.
    RegistryParser(tarvo::Reference<TarvoRegistry> root, std::u16string knownId);

    // Parses a file, whole or in pieces for as long as the outcome is complete. A piece begins with
    // the bytes that were not taken of the one before. The root is complete after the last piece.
    ParseOutcome parse(std::string_view bytes);

    // How many bytes of the file have been taken so far.
    std::size_t taken() const noexcept { return taken_; }

    // The file's id; the known one if the file has none.
    const std::u16string& id() const noexcept { return id_; }
    bool idSeen() const noexcept { return idSeen_; }

    // Tells more when the outcome is malformed.
    const MarkupFault& fault() const noexcept { return fault_; }

  private:
    ParseOutcome takeWritten(const WrittenElement& element);
    ParseOutcome takeElement(const MarkupTag& tag);
    ParseOutcome start(const MarkupTag& tag);
    ParseOutcome startRegistry(const MarkupTag& tag);
    ParseOutcome startKey(const MarkupTag& tag);
    ParseOutcome startValue(const MarkupTag& tag);
    ParseOutcome openValue(RegistryValueType type, std::size_t place);
    ParseOutcome end(const MarkupTag& tag);
    ParseOutcome endValue(std::size_t place);
    ParseOutcome addKey(tarvo::Reference<TarvoRegistry> key, std::size_t place);
    ParseOutcome addValue(tarvo::Reference<NamedValue> value, std::size_t place);
    void takeText(std::string_view bytes);
    void beginValue(RegistryValueType type) noexcept;
    bool fillsTree() const noexcept { return inRegistry_ && !inValue_ && skipDepth_ == 0; }
    std::size_t placeOf(const MarkupTag& tag) const noexcept { return taken_ + tag.position; }
    ParseOutcome fail(std::size_t offset, const char* reason);

    tarvo::Reference<TarvoRegistry> root_;
    std::vector<TarvoRegistry*> nodes_; // the keys being filled; the first is the root
    std::vector<std::string> elements_; // the names of the open tags

    TreeMemory memory_;

    RegistryValueType valueType_ = RegistryValueType::empty; // the value being read
    std::int32_t valueInteger_ = 0;
    FileText valueText_;
    FileText valueName_;
    std::size_t valuePlace_ = 0; // in the file

    NamedValue* lastValue_ = nullptr; // that was stored
    bool inRegistry_ = false;
    bool inValue_ = false;
    bool valueValid_ = false;
    std::u16string id_;
    bool idSeen_ = false;
    std::int32_t skipDepth_ = 0; // how many open elements are ignored

    std::size_t taken_ = 0;
    MarkupFault fault_;
    FileText scratch_;
};

} // namespace TARVO
