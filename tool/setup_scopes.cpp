#include "platform/file.h"
#include "platform/process.h"
#include "registry/registry_file.h"
#include "tool/registry_backup.h"
#include "tool/registry_file.h"
#include "tool/scope.h"
#include "tool/setup_examinations.h"
#include "tool/text.h"

#include <fmt/format.h>
#include <optional>

namespace tool {

namespace {

using TARVO::platform::File;
using TARVO::platform::FileError;

bool isDamaged(const RegistryFile& file) {
    return file.fault || file.isCutOff;
}

// One scope's file and what belongs to it.
class ScopeExamination {
  public:
    ScopeExamination(Checkup& checkup, const Library& library, bool allUsers)
        : checkup_(checkup), name_(scopeName(allUsers)), allUsers_(allUsers),
          path_(library.registryPath(allUsers)) {}

    void run() {
        examineFile();
        examineBackup();
        examineRights();
    }

  private:
    // Nothing if it can't be read, which is reported then.
    std::optional<RegistryFile> read(const std::u16string& path) {
        try {
            return readRegistryFile(path);
        } catch (const Failure& failure) {
            checkup_.report({"registry-unreadable", toUtf8(path), reasonOf(failure) + ".",
                             "See that no folder bears this name, that the user may read it, and "
                             "that no other program holds it.",
                             ""});
            return std::nullopt;
        }
    }

    void examineFile() {
        checkup_.note("file", toUtf8(path_));
        const auto file = read(path_);
        checkup_.note("state", file ? describeState(*file) : "can't be read");
        if (!file || (!isDamaged(*file) && !(file->isBlank && hasWholeBackup())))
            return;
        const std::string text =
            file->fault
                ? describeFault(path_, *file->fault) +
                      "; nothing of this scope is seen, and it can't be changed."
                : toUtf8(path_) + " is cut off, overwritten or empty: what it lacks isn't seen.";
        const char* kind = file->fault ? "registry-malformed" : "registry-cut-off";
        if (hasWholeBackup())
            checkup_.report({kind, toUtf8(path_), text,
                             fmt::format("Run `tarvo registry backup restore --scope {}`.", name_),
                             ""},
                            [this] { return restore(); });
        else
            checkup_.report({kind, toUtf8(path_), text,
                             "There is no whole backup: mend the file by hand, or move it away and "
                             "register the components again.",
                             ""});
    }

    bool hasWholeBackup() const try {
        wholeBackupOf(path_);
        return true;
    } catch (const Failure&) {
        return false;
    }

    std::string restore() const {
        const RestoredBackup restored = putBackupBack(path_);
        return fmt::format("It is as in {} now; what was there is kept as {}.",
                           toUtf8(restored.backup), toUtf8(restored.keptAs));
    }

    // A damaged backup does no harm by itself, but tells that changes went on from a damaged file.
    void examineBackup() {
        const std::u16string path = path_ + TARVO::kBackupSuffix;
        const auto backup = read(path);
        checkup_.note("backup", backup ? describeState(*backup) : "can't be read");
        if (!backup || !isDamaged(*backup))
            return;
        checkup_.report({"backup-damaged", toUtf8(path),
                         fmt::format("{} is {}; the file was damaged when it was last changed.",
                                     toUtf8(path), backup->fault ? "malformed" : "cut off"),
                         hasWholeBackup()
                             ? fmt::format("If something is missing from the scope, run `tarvo "
                                           "registry backup restore --scope {}`. The next change "
                                           "makes a new backup.",
                                           name_)
                             : "See whether all components are there, and register again what is "
                               "missing. The next change makes a new backup.",
                         ""});
    }

    void examineRights() {
        const bool mayWrite = mayWriteFile() && mayWriteFolder();
        const bool shouldWrite = !allUsers_ || TARVO::platform::isElevated();
        checkup_.note("rights", mayWrite      ? "this user can change it"
                                : shouldWrite ? "this user can't change it"
                                              : "only an administrator can change it");
        if (!mayWrite && shouldWrite)
            checkup_.report(
                {"registry-read-only", toUtf8(path_),
                 fmt::format("{} or its folder can't be written, so that nothing can be "
                             "registered.",
                             toUtf8(path_)),
                 "Give the user the right to write both.", ""});
    }

    // A file that somebody holds, or that isn't there yet, is none that can't be written.
    bool mayWriteFile() const {
        return File::openExclusive(path_).error != FileError::accessDenied;
    }

    // A change makes a backup there, so it is tried with a file.
    bool mayWriteFolder() const {
        const std::u16string probe = path_ + u".probe";
        TARVO::platform::OpenedFile made = File::createExclusive(probe);
        if (made.error != FileError::none)
            return made.error == FileError::exists || made.error == FileError::sharingViolation;
        made.file.close();
        return TARVO::platform::removeFile(probe);
    }

    Checkup& checkup_;
    std::string name_;
    bool allUsers_;
    std::u16string path_;
};

} // namespace

void examineScopes(Checkup& checkup, const Library& library) {
    for (const bool allUsers : {false, true}) {
        checkup.beginSection(fmt::format("Registry of the {} scope", scopeName(allUsers)));
        if (!library.dataFolder(allUsers).empty()) {
            ScopeExamination(checkup, library, allUsers).run();
            continue;
        }
        checkup.note("file", "none, for lack of a folder");
        checkup.report(
            {"no-data-folder", scopeName(allUsers),
             fmt::format("The {} scope has no folder, and none can be made.", scopeName(allUsers)),
             allUsers ? "Run `tarvo info` as an administrator once, which makes it."
                      : "See that the user has a home folder that can be written.",
             ""});
    }
}

} // namespace tool
