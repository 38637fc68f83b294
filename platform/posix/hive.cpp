#include "platform/posix/hive.h"

#include "platform/file.h"
#include "platform/posix/hive_text.h"
#include "platform/posix/path.h"
#include "platform/posix/place.h"

#include <new>

namespace TARVO::platform {
namespace {

// Nothing if it can't be read.
std::optional<std::string> textOf(const std::string& path) {
    File file = File::openForReading(fromNativePath(path)).file;
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    std::vector<char> buffer(64 * 1024);
    for (;;) {
        const auto count = file.read(buffer);
        if (!count) {
            return std::nullopt;
        }
        if (*count == 0) {
            return text;
        }
        text.append(buffer.data(), *count);
    }
}

} // namespace

Hive& Hive::ofUser() {
    static Hive hive{Owner::user};
    return hive;
}

Hive& Hive::ofMachine() {
    static Hive hive{Owner::machine};
    return hive;
}

ReadOnlyHiveKey Hive::root() {
    const std::scoped_lock guard{mutex_};
    return refresh() ? tree_->root() : nullptr;
}

bool Hive::canWrite(std::u16string_view path) {
    const std::scoped_lock guard{mutex_};
    return refresh() && tree_->has(path) && ensureFolder(path_.substr(0, path_.rfind('/'))) &&
           mayReplaceFile(path_);
}

bool Hive::make(const Change& change) {
    const std::scoped_lock guard{mutex_};
    try {
        if (batches_ > 0) {
            if (!refresh() || !change(*tree_)) {
                return false;
            }
            pending_.push_back(change);
            return true;
        }
        const ReplacingLock lock{filePath()};
        return lock && refresh() && change(*tree_) && store();
    } catch (...) {
        forget(); // half of the change may have been made
        throw;
    }
}

void Hive::beginBatch() {
    const std::scoped_lock guard{mutex_};
    ++batches_;
}

bool Hive::endBatch() noexcept {
    const std::scoped_lock guard{mutex_};
    if (--batches_ > 0 || pending_.empty()) {
        return true;
    }
    try {
        const ReplacingLock lock{filePath()};
        if (lock && refresh() && store()) {
            return true;
        }
    } catch (const std::bad_alloc&) {
        // As for want of room on the disk.
    }
    forget();
    return false;
}

// Empty if there is no such place.
std::string Hive::filePath() const {
    const bool ofUser = owner_ == Owner::user;
    std::string folder;
    if (const auto root = platformRoot()) {
        folder = *root;
    } else {
        folder = ofUser ? userFolder("XDG_CONFIG_HOME", ".config") : "/var/lib";
        folder += folder.empty() ? "" : "/Ostrandia/registry";
    }
    return folder.empty() ? folder : folder + (ofUser ? "/HKCU.reg" : "/HKLM.reg");
}

std::u16string_view Hive::rootName() const {
    return owner_ == Owner::user ? u"HKEY_CURRENT_USER" : u"HKEY_LOCAL_MACHINE";
}

// Sees to it that the tree is that of the file. False if there is none.
bool Hive::refresh() {
    std::string path = filePath();
    const FileState now{path};
    if (!loaded_ || path != path_ || !loaded_->isStillThatOf(now)) {
        tree_.reset();
        loaded_.reset();
        path_ = std::move(path);
        load(now);
    }
    return tree_.has_value();
}

void Hive::load(const FileState& state) {
    HiveTree tree;
    if (state.exists()) {
        const auto text = textOf(path_);
        if (!text) {
            return; // perhaps the next time
        }
        if (!readHive(*text, rootName(), tree)) {
            loaded_ = state;
            return;
        }
    }
    for (const Change& change : pending_) {
        change(tree);
    }
    tree_ = std::move(tree);
    loaded_ = state;
}

// The lock is held, and the tree is to be the file's.
bool Hive::store() {
    pending_.clear();
    if (!replaceFile(path_, writeHive(*tree_->root(), rootName()))) {
        forget();
        return false;
    }
    loaded_ = FileState{path_};
    return true;
}

void Hive::forget() {
    pending_.clear();
    loaded_.reset();
    tree_.reset();
}

} // namespace TARVO::platform
