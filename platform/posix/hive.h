// One hive of the system registry: its tree in this process, and its file. The tree is that of the
// file as it was last read and of the changes of a batch since then; these are made again whenever
// the file turns out to have been replaced. So a batch needs no lock while it lasts, and none of
// two processes waits for the other longer than one file takes to be written. Any thread.
#pragma once

#include "platform/posix/hive_tree.h"
#include "platform/posix/replaced_file.h"

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TARVO::platform {

class Hive {
  public:
    // Gives false, and changes nothing, if that isn't possible: say because a key isn't there.
    using Change = std::function<bool(HiveTree&)>;

    static Hive& ofUser();
    static Hive& ofMachine();

    // The root as it is now, to be read; null if the file can't be understood.
    ReadOnlyHiveKey root();

    // Is there this key, and may this process change the hive? Makes the folder of the file.
    bool canWrite(std::u16string_view path);

    // False if the change isn't possible or, outside a batch, can't be stored.
    bool make(const Change& change);

    // Between these, changes stay in this process. The end gives false if they can't be stored;
    // they are gone then.
    void beginBatch();
    bool endBatch() noexcept;

  private:
    enum class Owner { user, machine };

    explicit Hive(Owner owner) : owner_{owner} {}

    std::string filePath() const;
    std::u16string_view rootName() const;
    bool refresh();
    void load(const FileState& state);
    bool store();
    void forget();

    const Owner owner_;

    std::mutex mutex_; // guards all below
    std::string path_;
    std::optional<FileState> loaded_; // nothing if nothing was loaded
    std::optional<HiveTree> tree_;    // nothing if the file can't be read or understood
    std::vector<Change> pending_;
    int batches_ = 0;
};

} // namespace TARVO::platform
