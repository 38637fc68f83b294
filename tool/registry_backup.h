// Backups of a scope's registry file, and putting one of them back.
#pragma once

#include <optional>
#include <string>

namespace tool {

// The backup that is whole: the state before the last change or, if that is damaged as well, the
// last one that was whole. Raises Failure with what is wrong if there is none.
std::u16string wholeBackupOf(const std::u16string& path);

// What was done when a backup was put back.
struct RestoredBackup {
    std::u16string backup;
    std::u16string keptAs; // where the file now is that was there; empty if there was none
};

// Puts the backup that is whole in the place of a registry file. Raises Failure.
RestoredBackup putBackupBack(const std::u16string& path);

} // namespace tool
