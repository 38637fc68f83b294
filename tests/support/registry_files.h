// The registry files of the machine state that a test program runs on, and a short way to read them
// through the library.
#pragma once

#include "platform/file.h"
#include "tests/support/tarvo_library.h"

#include <tarvo/array.hpp>
#include <tarvo/reference.hpp>
#include <tarvo/text.hpp>

#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>

namespace tests {

enum class Scope { user = 0, machine = 1 };

inline std::filesystem::path registryFile(Scope scope) {
    tarvo::String folder;
    const TarvoResult result = scope == Scope::machine
                                   ? TARVO_CALL(getTarvoDataFolder)(folder.pair())
                                   : TARVO_CALL(getTarvoUserDataFolder)(folder.pair());
    EXPECT_EQ(result, TarvoResult{RC_OK});
    EXPECT_FALSE(folder.text().empty());
    return std::filesystem::path(folder.text() + u"registry.dat");
}

// Writes a file as a commit does: nobody reads it meanwhile.
inline void writeFile(const std::filesystem::path& path, std::string_view bytes) {
    using TARVO::platform::File;
    using TARVO::platform::FileError;
    const std::u16string name = path.u16string();
    TARVO::platform::OpenedFile opened;
    do {
        opened = File::openExclusive(name);
        if (opened.error == FileError::notFound)
            opened = File::createExclusive(name);
    } while (opened.error == FileError::sharingViolation || opened.error == FileError::exists);
    ASSERT_EQ(opened.error, FileError::none) << path;
    ASSERT_EQ(opened.file.write({bytes.data(), bytes.size()}), bytes.size()) << path;
    ASSERT_TRUE(opened.file.truncateHere()) << path;
}

// A file with this content, under an id that no other file of the run has.
inline std::string registryText(std::string_view content) {
    static int number = 0;
    return "<registry id=\"file " + std::to_string(++number) + "\">" + std::string(content) +
           "</registry>\n";
}

inline void setScope(Scope scope, std::string_view content) {
    writeFile(registryFile(scope), registryText(content));
}

inline void removeScope(Scope scope) {
    std::filesystem::remove_all(registryFile(scope));
}

// Starts with no registry file in either scope.
class EmptyScopes : public testing::Test {
  protected:
    EmptyScopes() {
        removeScope(Scope::user);
        removeScope(Scope::machine);
    }
};

inline TarvoResult openKey(const char16_t* path, tarvo::Reference<IVaskRegistryKey>& key) {
    return TARVO_CALL(vaskGetRegistryKey)(path, key.out());
}

// The key at a path, which must be there.
inline tarvo::Reference<IVaskRegistryKey> keyAt(const char16_t* path) {
    tarvo::Reference<IVaskRegistryKey> key;
    EXPECT_EQ(openKey(path, key), TarvoResult{RC_OK});
    return key;
}

using Names = std::multiset<std::u16string>;

inline Names namesOf(IVaskRegistryKey& key, TarvoResult (*slot)(void*, IVaskArray*)) {
    tarvo::StringArray array;
    EXPECT_EQ(slot(key.me, array.pair()), TarvoResult{RC_OK});
    Names names;
    for (const tarvo::String& name : array.strings())
        names.insert(name.text());
    return names;
}

inline Names valueNames(IVaskRegistryKey& key) {
    return namesOf(key, key.table->getValueNames);
}
inline Names keyNames(IVaskRegistryKey& key) {
    return namesOf(key, key.table->getKeyNames);
}

// The text of a string value, or the code in angle brackets.
inline std::u16string textOf(IVaskRegistryKey& key, const char16_t* name,
                             const char16_t* path = nullptr) {
    tarvo::String text;
    const TarvoResult result = key.table->getStringValue(key.me, name, path, text.pair());
    return result == RC_OK ? text.text() : wide("<" + std::to_string(result) + ">");
}

} // namespace tests
