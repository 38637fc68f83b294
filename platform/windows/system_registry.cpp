#include "platform/system_registry.h"

#include "platform/windows/native_text.h"

#include <algorithm>
#include <limits>
#include <shlwapi.h>

namespace TARVO::platform {
namespace {

HKEY asKey(void* handle) {
    return static_cast<HKEY>(handle);
}

HKEY rootKey(RegistryRoot root) {
    switch (root) {
    case RegistryRoot::classesRoot:
        return HKEY_CLASSES_ROOT;
    case RegistryRoot::currentUser:
        return HKEY_CURRENT_USER;
    case RegistryRoot::localMachine:
        return HKEY_LOCAL_MACHINE;
    }
    return nullptr;
}

REGSAM viewFlag(RegistryView view) {
    switch (view) {
    case RegistryView::either:
        return 0;
    case RegistryView::view32:
        return KEY_WOW64_32KEY;
    case RegistryView::view64:
        return KEY_WOW64_64KEY;
    }
    return 0;
}

// The system counts in 32 bits, and refuses values far below that.
DWORD sizeOf(std::span<const std::byte> bytes) {
    constexpr std::size_t largest = std::numeric_limits<DWORD>::max();
    return static_cast<DWORD>(std::min(bytes.size(), largest));
}

// Does the number lie behind the last subkey? Also true if the key is gone.
bool isBehindLast(HKEY key, DWORD index) {
    DWORD count = 0;
    return RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS ||
           index >= count;
}

} // namespace

struct SystemKeyAccess {
    static SystemKey open(HKEY parent, const char16_t* path, REGSAM access, RegistryView view) {
        HKEY key = nullptr;
        const LSTATUS status =
            RegOpenKeyExW(parent, asNative(path), 0, access | viewFlag(view), &key);
        return SystemKey{status == ERROR_SUCCESS ? key : nullptr};
    }
};

SystemKey SystemKey::open(RegistryRoot root, const char16_t* path, RegistryView view) {
    return SystemKeyAccess::open(rootKey(root), path, KEY_READ, view);
}

SystemKey SystemKey::openForWriting(RegistryRoot root, const char16_t* path, RegistryView view) {
    if (root == RegistryRoot::classesRoot) {
        return {}; // the system would choose between the user's and the machine's
    }
    return SystemKeyAccess::open(rootKey(root), path, KEY_WRITE, view);
}

void SystemKey::close() {
    if (handle_) {
        RegCloseKey(asKey(std::exchange(handle_, nullptr)));
    }
}

SystemKey SystemKey::open(const char16_t* path, RegistryView view) const {
    return SystemKeyAccess::open(asKey(handle_), path, KEY_READ, view);
}

SystemKey SystemKey::openForWriting(const char16_t* path, RegistryView view) const {
    return SystemKeyAccess::open(asKey(handle_), path, KEY_WRITE, view);
}

SystemKey SystemKey::create(const char16_t* path, RegistryView view) const {
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExW(asKey(handle_), asNative(path), 0, nullptr, 0,
                                           KEY_WRITE | viewFlag(view), nullptr, &key, nullptr);
    return SystemKey{status == ERROR_SUCCESS ? key : nullptr};
}

std::optional<SystemValue> SystemKey::findValue(const char16_t* name) const {
    DWORD type = 0;
    DWORD size = 0;
    if (RegQueryValueExW(asKey(handle_), asNative(name), nullptr, &type, nullptr, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    return SystemValue{type, size};
}

std::optional<SystemValue> SystemKey::readValue(const char16_t* name,
                                                std::span<std::byte> buffer) const {
    DWORD type = 0;
    auto size = sizeOf(buffer);
    if (RegQueryValueExW(asKey(handle_), asNative(name), nullptr, &type,
                         reinterpret_cast<BYTE*>(buffer.data()), &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return SystemValue{type, size};
}

bool SystemKey::setValue(const char16_t* name, std::uint32_t type,
                         std::span<const std::byte> bytes) const {
    return RegSetValueExW(asKey(handle_), asNative(name), 0, type,
                          reinterpret_cast<const BYTE*>(bytes.data()),
                          sizeOf(bytes)) == ERROR_SUCCESS;
}

bool SystemKey::deleteTree(const char16_t* path, RegistryView view) const {
    const std::u16string_view text{path};
    if (text.empty() || text.starts_with(u'\\')) {
        return false; // this key itself, or no path
    }
    // The system's function knows no views, so the key above is opened in the right one.
    const std::size_t separator = text.rfind(u'\\');
    if (separator == std::u16string_view::npos) {
        return SHDeleteKeyW(asKey(handle_), asNative(path)) == ERROR_SUCCESS;
    }
    const SystemKey parent = open(std::u16string{text.substr(0, separator)}.c_str(), view);
    return parent && parent.deleteTree(path + separator + 1);
}

const char16_t* SubkeyNames::next() {
    const HKEY key = asKey(key_.handle_);
    for (;;) {
        auto size = static_cast<DWORD>(name_.size());
        const DWORD index = index_++;
        const LSTATUS status = RegEnumKeyExW(key, index, reinterpret_cast<wchar_t*>(name_.data()),
                                             &size, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_SUCCESS) {
            return name_.data();
        }
        // A key that was deleted fails at every index, and would do so for ever.
        if (status == ERROR_NO_MORE_ITEMS ||
            (status != ERROR_MORE_DATA && isBehindLast(key, index))) {
            return nullptr;
        }
    }
}

RegistryBatch::RegistryBatch() = default;

bool RegistryBatch::store() {
    isOpen_ = false;
    return true;
}

} // namespace TARVO::platform
