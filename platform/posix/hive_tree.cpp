#include "platform/posix/hive_tree.h"

#include "platform/posix/ascii_case.h"
#include "platform/text.h"

#include <algorithm>

namespace TARVO::platform {
namespace {

constexpr char16_t kSeparator = u'\\';

// As on Windows.
constexpr std::size_t kLongestName = 255;

// A key's destructor calls those of its subkeys; this bounds how deep. Windows takes 512 levels,
// classes need eight.
constexpr std::size_t kDeepestKey = 100;

bool canBeKeyName(std::u16string_view name) {
    const auto isControl = [](char16_t c) {
        return c < u' ';
    };
    return !name.empty() && name.size() <= kLongestName && std::ranges::none_of(name, isControl) &&
           isWellFormed(name);
}

bool canBePath(std::u16string_view path) {
    std::size_t depth = 0;
    while (!path.empty()) {
        if (!canBeKeyName(takeKeyName(path)) || ++depth > kDeepestKey) {
            return false;
        }
    }
    return true;
}

} // namespace

bool isWellFormed(std::u16string_view text) {
    const auto isSurrogate = [](char16_t c) {
        return c >= 0xD800 && c <= 0xDFFF;
    };
    if (std::ranges::none_of(text, isSurrogate)) {
        return true;
    }
    std::string utf8;
    appendUtf8(text, utf8);
    std::u16string back;
    appendUtf16(utf8, back);
    return back == text;
}

bool LessWithoutCase::operator()(std::u16string_view one, std::u16string_view other) const {
    return std::ranges::lexicographical_compare(one, other, {}, loweredAscii<char16_t>,
                                                loweredAscii<char16_t>);
}

ReadOnlyHiveKey subkeyOf(const HiveKey& key, std::u16string_view name) {
    const auto found = key.subkeys.find(name);
    return found == key.subkeys.end() ? nullptr : found->second;
}

std::u16string_view takeKeyName(std::u16string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of(kSeparator), path.size()));
    const std::u16string_view name = path.substr(0, path.find(kSeparator));
    path.remove_prefix(name.size());
    return name;
}

HiveTree::HiveTree() {
    createStandardKeys();
}

ReadOnlyHiveKey HiveTree::root() {
    ++edition_;
    return root_;
}

HiveKey* HiveTree::edit(std::u16string_view path) {
    return has(path) ? &descend(path) : nullptr;
}

HiveKey* HiveTree::create(std::u16string_view path) {
    return canBePath(path) ? &descend(path) : nullptr;
}

bool HiveTree::remove(std::u16string_view path) {
    if (!has(path)) {
        return false;
    }
    const std::size_t nameAt = path.rfind(kSeparator) + 1; // 0 for a key of the root
    HiveKey& parent = descend(path.substr(0, nameAt));
    parent.subkeys.erase(parent.subkeys.find(path.substr(nameAt)));
    createStandardKeys();
    return true;
}

bool HiveTree::has(std::u16string_view path) const {
    const HiveKey* key = root_.get();
    while (key && !path.empty()) {
        const auto found = key->subkeys.find(takeKeyName(path));
        key = found == key->subkeys.end() ? nullptr : found->second.get();
    }
    return key != nullptr;
}

HiveKey& HiveTree::descend(std::u16string_view path) {
    HiveKey* key = &changeable(root_);
    for (auto name = takeKeyName(path); !name.empty(); name = takeKeyName(path)) {
        auto subkey = key->subkeys.find(name);
        if (subkey == key->subkeys.end()) {
            subkey = key->subkeys.emplace(name, std::make_shared<HiveKey>()).first;
        }
        key = &changeable(subkey->second);
    }
    return *key;
}

// Takes the place of a key that a reader may have by a copy.
HiveKey& HiveTree::changeable(std::shared_ptr<HiveKey>& key) const {
    if (key->edition != edition_) {
        key = std::make_shared<HiveKey>(*key);
        key->edition = edition_;
    }
    return *key;
}

void HiveTree::createStandardKeys() {
    for (const auto* path :
         {u"Software\\Classes\\CLSID", u"Software\\Classes\\Wow6432Node\\CLSID"}) {
        if (!has(path)) { // what is there need not be copied
            descend(path);
        }
    }
}

} // namespace TARVO::platform
