#include "platform/file.h"
#include "registry/registry_file.h"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/library.h"
#include "tool/registry_file.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

namespace {

// A name that is still free for the file that is put aside.
std::u16string freeName(const std::u16string& path) {
    for (int number = 1;; ++number) {
        std::u16string name = path + u".damaged-" + toUtf16(std::to_string(number));
        if (!platform::fileExists(name))
            return name;
    }
}

void checkBackup(const std::u16string& path) {
    const RegistryFile backup = readRegistryFile(path);
    if (!backup.isThere)
        throw Failure("there is no backup " + toUtf8(path));
    if (backup.fault)
        throw Failure(describeFault(path, *backup.fault), RC_BAD_REGISTRY_FILE);
    if (backup.isCutOff)
        throw Failure("the backup itself is cut off: " + toUtf8(path));
}

// The file is overwritten in place while nobody else has it, as a commit does.
void overwrite(const std::u16string& from, const std::u16string& to) {
    platform::OpenedFile source = platform::File::openForReading(from);
    TARVO::FileBytes bytes(source.file);
    if (source.error != platform::FileError::none || !bytes.readAll())
        throw Failure("cannot read " + toUtf8(from));
    platform::File target;
    require(TARVO::openRegistryExclusive(to, target), "cannot open " + toUtf8(to));
    const std::string_view text = bytes.view();
    if (!target || !target.seekTo(0) || target.write({text.data(), text.size()}) != text.size() ||
        !target.truncateHere())
        throw Failure("cannot write " + toUtf8(to));
}

} // namespace

void restoreBackup(Scope scope) {
    const Library library;
    const std::u16string path = library.registryPath(scope == Scope::machine);
    const std::u16string backup = path + u".backup";
    checkBackup(backup);
    if (platform::fileExists(path)) {
        const std::u16string aside = freeName(path);
        if (!platform::copyFileOver(path, aside))
            throw Failure("cannot copy " + toUtf8(path) + " to " + toUtf8(aside));
        fmt::print("what was there is kept as {}\n", toUtf8(aside));
    }
    overwrite(backup, path);
    fmt::print("{} is as it was before the last commit\n", toUtf8(path));
}

} // namespace tool
