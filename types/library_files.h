// The definition files of type libraries, which stand beside the registry file. A writer notes what
// is to come and to go; commits carry it out, around their own work on the registry file.
#pragma once

#include "tarvo/base.h"

#include <string>
#include <vector>

namespace TARVO {

class LibraryFiles {
  public:
    // Notes a file to be copied: from this path, to this name.
    void stage(std::u16string sourcePath, std::u16string fileName);

    // Notes a file to be removed.
    void retire(std::u16string fileName);

    // Copies what is staged into the folder of the registry file. RC_OK, RC_NO_DATA_FOLDER (one
    // can't be copied; those before it are).
    Result copyStaged(const std::u16string& registryPath) const;

    // Removes what is retired from the folder of the registry file, as far as it can be removed.
    // RC_OK, RC_NOT_FOUND (the path names no folder).
    Result removeRetired(const std::u16string& registryPath) const;

    void clear() noexcept;

  private:
    struct StagedFile {
        std::u16string sourcePath;
        std::u16string fileName;
    };

    std::vector<StagedFile> staged_;
    std::vector<std::u16string> retired_;
};

} // namespace TARVO
