#include "tool/registry_backup.h"

#include "platform/file.h"
#include "registry/registry_file.h"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/library.h"
#include "tool/output.h"
#include "tool/registry_file.h"
#include "tool/text.h"

namespace tool {

namespace {

// A name that is still free for the file that is put aside.
std::u16string freeName(const std::u16string& path) {
    for (int number = 1;; ++number) {
        std::u16string name = path + u".damaged-" + toUtf16(std::to_string(number));
        if (!TARVO::platform::fileExists(name))
            return name;
    }
}

// Says why a backup can't be put back; empty if it can.
std::optional<Failure> faultOf(const std::u16string& path) {
    const RegistryFile backup = readRegistryFile(path);
    if (!backup.isThere)
        return Failure("there is no backup " + toUtf8(path));
    if (backup.fault)
        return Failure(describeFault(path, *backup.fault), RC_BAD_REGISTRY_FILE);
    if (backup.isCutOff)
        return Failure("the backup itself is cut off: " + toUtf8(path));
    if (backup.isBlank)
        return Failure("the backup holds nothing: " + toUtf8(path));
    return std::nullopt;
}

// The file is overwritten in place while nobody else has it, as a commit does.
void overwrite(const std::u16string& from, const std::u16string& to) {
    TARVO::platform::OpenedFile source = TARVO::platform::File::openForReading(from);
    TARVO::FileBytes bytes(source.file);
    if (source.error != TARVO::platform::FileError::none || !bytes.readAll())
        throw Failure("cannot read " + toUtf8(from));
    TARVO::platform::File target;
    require(TARVO::openRegistryExclusive(to, target), "cannot open " + toUtf8(to));
    const std::string_view text = bytes.view();
    if (!target || !target.seekTo(0) || target.write({text.data(), text.size()}) != text.size() ||
        !target.truncateHere())
        throw Failure("cannot write " + toUtf8(to));
}

} // namespace

// The backup is as damaged as the file where commits went on from a damaged file. The last whole
// one is beside it then.
std::u16string wholeBackupOf(const std::u16string& path) {
    std::u16string backup = path + TARVO::kBackupSuffix;
    const auto fault = faultOf(backup);
    if (!fault)
        return backup;
    if (std::u16string aside = path + TARVO::kWholeBackupSuffix; !faultOf(aside))
        return aside;
    throw Failure(*fault);
}

RestoredBackup putBackupBack(const std::u16string& path) {
    RestoredBackup restored{wholeBackupOf(path), {}};
    if (TARVO::platform::fileExists(path)) {
        restored.keptAs = freeName(path);
        if (!TARVO::platform::copyFileOver(path, restored.keptAs))
            throw Failure("cannot copy " + toUtf8(path) + " to " + toUtf8(restored.keptAs));
    }
    overwrite(restored.backup, path);
    return restored;
}

void restoreBackup(Scope scope) {
    const Library library;
    const std::u16string path = library.registryPath(scope == Scope::machine);
    const RestoredBackup restored = putBackupBack(path);
    if (!restored.keptAs.empty())
        printOut("what was there is kept as {}\n", toUtf8(restored.keptAs));
    printOut("{} is now as in {}\n", toUtf8(path), toUtf8(restored.backup));
}

} // namespace tool
