// The registry that the system keeps for every program, as far as components are found and
// published in it. A failure is an ordinary outcome here (a key that isn't there, no right to
// write): an open gives a key that is false, a read gives nothing, a write gives false; only a lack
// of memory raises.
//
// Paths and names end in a null character, because Windows wants them so and nothing need be
// copied. The components of a path are separated by '\'. An empty path is the key itself. The value
// name null or "" is the key's default value.
//
// Where the system has no registry, the platform layer keeps one in two text files, one for the
// user and one for the machine, and these rules hold:
// - A key that is open for reading shows the registry as it was when it, or the key that it was
//   opened below, was opened from a root. Only an open from a root, or below a key that is open for
//   writing, looks whether a file has changed; all else costs no call of the system.
// - A change stands in its file when the call that makes it gives true. Each change replaces the
//   whole file, so who makes many puts a RegistryBatch around them. Nobody ever sees a file that is
//   half written, whenever a process ends; changes of several processes all count, in their order.
// - A file that can't be understood is left as it is: none of its keys opens, nor for writing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace TARVO::platform {

enum class RegistryRoot {
    classesRoot, // the user's classes over the machine's, for reading alone
    currentUser,
    localMachine,
};

// A class has one place for 32-bit programs and one for 64-bit programs. Who wants a view names it
// at every open from the root down to the class.
enum class RegistryView {
    either, // the keys as they are spelled: what a 64-bit program sees by itself
    view32,
    view64,
};

// Numbers of value types that programs store; others are possible.
inline constexpr std::uint32_t kTextValue = 1; // UTF-16, as a rule with a null character at its end
inline constexpr std::uint32_t kNumberValue = 4; // 32 bits

struct SystemValue {
    std::uint32_t type;
    std::size_t size; // in bytes
};

// An open key, for reading or for writing. A key that is open for writing can't be read, but keys
// below it can be opened for either. Any number of threads at once may use it, apart from closing.
// All that is asked of a key that is false fails.
class SystemKey {
  public:
    static SystemKey open(RegistryRoot root, const char16_t* path,
                          RegistryView view = RegistryView::either);
    static SystemKey openForWriting(RegistryRoot root, const char16_t* path,
                                    RegistryView view = RegistryView::either);

    SystemKey() = default;
    SystemKey(SystemKey&& other) noexcept : handle_{std::exchange(other.handle_, nullptr)} {}
    SystemKey& operator=(SystemKey other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~SystemKey() { close(); }

    explicit operator bool() const { return handle_ != nullptr; }
    void close();

    SystemKey open(const char16_t* path, RegistryView view = RegistryView::either) const;

    // For writing, below a key that is open for writing.
    SystemKey openForWriting(const char16_t* path, RegistryView view = RegistryView::either) const;

    // The same; makes every key of the path that isn't there.
    SystemKey create(const char16_t* path, RegistryView view = RegistryView::either) const;

    // What a value holds, whatever its type.
    std::optional<SystemValue> findValue(const char16_t* name) const;

    // The same, with its bytes put into `buffer`. Fails also if they don't fit.
    std::optional<SystemValue> readValue(const char16_t* name, std::span<std::byte> buffer) const;

    // The key is open for writing. A text is stored with its null character.
    bool setText(const char16_t* name, const char16_t* text) const {
        const std::size_t size = std::u16string_view{text}.size() + 1;
        return setValue(name, kTextValue, std::as_bytes(std::span{text, size}));
    }
    bool setValue(const char16_t* name, std::uint32_t type, std::span<const std::byte> bytes) const;

    // The key is open for writing. Removes the key of this path, which is below this one and not
    // the key itself, with all that is below it. False if there is no such key.
    bool deleteTree(const char16_t* path, RegistryView view = RegistryView::either) const;

  private:
    explicit SystemKey(void* handle) : handle_{handle} {}

    void* handle_ = nullptr; // the system's own handle, or the stand-in's

    friend struct SystemKeyAccess; // makes keys in the system's own way
    friend class SubkeyNames;
};

// Goes through the names of a key's subkeys. Names of 128 or more characters are passed over, and
// so are others that the system can't give. Keys that come or go meanwhile may be missed. The key
// outlives this object; one thread at a time.
class SubkeyNames {
  public:
    explicit SubkeyNames(const SystemKey& key) : key_{key} {}

    // The next name, valid until the next call; null behind the last.
    const char16_t* next();

  private:
    const SystemKey& key_;
    std::uint32_t index_ = 0; // of the next name
    std::array<char16_t, 128> name_{};
};

// Gathers the changes that this process makes while it exists. They are seen in this process at
// once, elsewhere all together at the end: none of them is lost if the batch has given true, and
// all are if the process ends before. On Windows every change stands at once all the same. Batches
// may overlap; the last one counts.
class RegistryBatch {
  public:
    RegistryBatch();
    RegistryBatch(const RegistryBatch&) = delete;
    RegistryBatch& operator=(const RegistryBatch&) = delete;
    ~RegistryBatch() { store(); }

    // Ends the batch. False if the changes could not be stored; they are gone then. A second call
    // does nothing.
    bool store();

  private:
    bool isOpen_ = true;
};

} // namespace TARVO::platform
