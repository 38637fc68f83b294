// The short way to change the registry through the library, and to see what came of it in the file.
#pragma once

#include "tests/support/registry_files.h"

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

namespace tests {

using Writer = tarvo::Reference<IVaskRegistryWriter>;
using KeyWriter = tarvo::Reference<IVaskRegistryKeyWriter>;

inline TarvoResult openWriter(Writer& writer, Scope scope = Scope::user) {
    return TARVO_CALL(vaskGetRegistryWriter)(static_cast<std::uint8_t>(scope), writer.out());
}

// A writer, which must be had.
inline Writer newWriter(Scope scope = Scope::user) {
    Writer writer;
    EXPECT_EQ(openWriter(writer, scope), RC_OK);
    return writer;
}

inline KeyWriter keyWriter(const Writer& writer, const char16_t* path) {
    KeyWriter key;
    EXPECT_EQ(writer->table->getKeyWriter(writer->me, path, key.out()), RC_OK);
    return key;
}

inline void setText(const KeyWriter& key, const char16_t* name, const char16_t* text) {
    EXPECT_EQ(key->table->setStringValue(key->me, name, text), RC_OK);
}

inline TarvoResult commitOf(const Writer& writer) {
    return writer->table->commit(writer->me);
}

// A commit that must succeed.
inline void commit(const Writer& writer) {
    EXPECT_EQ(commitOf(writer), RC_OK);
}

inline std::string fileText(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(text).str();
}

// The copy that a commit makes of the state before.
inline std::filesystem::path backupOf(std::filesystem::path file) {
    return file += ".backup";
}

// Where the backup is kept once a damaged file takes its place.
inline std::filesystem::path wholeBackupOf(std::filesystem::path file) {
    return file += ".backup-whole";
}

inline void restoreBackup(const std::filesystem::path& file) {
    writeFile(file, fileText(backupOf(file)));
}

} // namespace tests
