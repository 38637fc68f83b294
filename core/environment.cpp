#include "core/environment.h"

#include "core/resource.h"
#include "core/slot.h"
#include "platform/folder.h"
#include "platform/module.h"
#include "tarvo/environment.h"
#include "tarvo/resource.h"
#include "tarvo/text.hpp"

#include <mutex>

namespace TARVO {

namespace {

// The folder of a special folder's own below which the library keeps a scope's data.
class DataFolder {
  public:
    explicit DataFolder(platform::SpecialFolder parent) : parent_(parent) {}

    // Calls `use` with the folder while the lock is held, so that two threads see it made once.
    template <class Use>
    auto with(Use&& use) {
        const std::lock_guard lock(mutex_);
        if (!tried_) {
            tried_ = true;
            folder_ = make();
        }
        return use(folder_);
    }

  private:
    std::u16string make() const {
        std::u16string folder = platform::specialFolder(parent_);
        if (folder.empty())
            return folder;
        if (folder.back() != platform::kFolderSeparator)
            folder.push_back(platform::kFolderSeparator);
        ensureFolder(folder.append(u"Ostrandia"));
        ensureFolder(folder.append(1, platform::kFolderSeparator).append(u"TARVO"));
        if (!platform::folderExists(folder))
            return {};
        folder.push_back(platform::kFolderSeparator);
        return folder;
    }

    // Whether it worked shows when the innermost folder is looked for.
    static void ensureFolder(const std::u16string& folder) {
        if (!platform::folderExists(folder))
            platform::createFolder(folder);
    }

    platform::SpecialFolder parent_;
    std::mutex mutex_;
    bool tried_ = false;
    std::u16string folder_;
};

DataFolder& dataFolderOf(bool allUsers) {
    static DataFolder machine(platform::SpecialFolder::commonAppData);
    static DataFolder user(platform::SpecialFolder::localAppData);
    return allUsers ? machine : user;
}

Result giveDataFolder(bool allUsers, IVaskString* folder) {
    return guardedCall([&]() -> Result {
        if (folder == nullptr)
            return RC_NULL_POINTER;
        return dataFolderOf(allUsers).with(
            [&](const std::u16string& text) { return tarvo::setText(folder, text); });
    });
}

} // namespace

const std::u16string& moduleFolder() {
    static const std::u16string folder = [] {
        const std::u16string path = platform::ownModulePath();
        return path.substr(0, path.rfind(platform::kFolderSeparator) + 1);
    }();
    return folder;
}

std::u16string dataFolder(bool allUsers) {
    return dataFolderOf(allUsers).with([](const std::u16string& text) { return text; });
}

} // namespace TARVO

TarvoResult getTarvoFolder(IVaskString* folder) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (folder == nullptr)
            return RC_NULL_POINTER;
        return tarvo::setText(folder, TARVO::moduleFolder());
    });
}

TarvoResult getTarvoDataFolder(IVaskString* folder) {
    return TARVO::giveDataFolder(true, folder);
}

TarvoResult getTarvoUserDataFolder(IVaskString* folder) {
    return TARVO::giveDataFolder(false, folder);
}

TarvoResult getTarvoLanguage(IVaskString* language) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (language == nullptr)
            return RC_NULL_POINTER;
        const char16_t* tag = TARVO::resourceText(TARVO_RESOURCE_LANGUAGE);
        return tarvo::setText(language, tag != nullptr ? tag : u"");
    });
}

TarvoResult getTarvoVersion(IVaskString* version) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (version == nullptr)
            return RC_NULL_POINTER;
        return tarvo::setText(version, TARVO_VERSION);
    });
}
