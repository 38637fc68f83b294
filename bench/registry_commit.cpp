// Committing one changed value: the whole of it beside a transaction of a database that holds the
// same values, and beside the work on the file that no commit of this kind can do without; then
// each of its steps alone.
#include "bench/machine.h"
#include "bench/registry_data.h"
#include "bench/require.h"
#include "registry/registry_file.h"
#include "registry/registry_key_writer.h"
#include "registry/registry_parser.h"
#include "registry/registry_text.h"

#include <tarvo/registry_writer.h>
#include <tarvo/result.h>
#include <tarvo/text.hpp>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <pugixml.hpp>
#include <sqlite3.h>
#include <string>

namespace {

using bench::require;
using tarvo::Reference;
using TARVO::TarvoRegistry;
using Writer = Reference<IVaskRegistryWriter>;
using KeyWriter = Reference<IVaskRegistryKeyWriter>;

struct Edit {
    Writer writer;
    KeyWriter key;
    std::int32_t number = 0;

    Edit() {
        require(vaskGetRegistryWriter(0, writer.out()) == RC_OK);
        require(writer->table->getKeyWriter(writer->me, u"/components/pmcs", key.out()) == RC_OK);
    }
    void commitOneValue() {
        require(key->table->setIntegerValue(key->me, u"changed", ++number) == RC_OK);
        require(writer->table->commit(writer->me) == RC_OK);
    }
};

// The user's registry file with about so many bytes, as a commit leaves it.
std::filesystem::path registryFileOf(std::size_t size) {
    static std::map<std::size_t, std::string> texts;
    std::string& text = texts[size];
    if (text.empty())
        text = bench::registryOfSize(size, "bench");
    const std::filesystem::path path = bench::userRegistryFile();
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
    Edit().commitOneValue();
    return path;
}

void commitByTarvo(benchmark::State& state, std::size_t size) {
    registryFileOf(size);
    Edit edit;
    for (auto _ : state)
        edit.commitOneValue();
}

// ---- the steps ----

void copyFile(const std::u16string& path) {
    require(TARVO::platform::copyFileOver(path, path + u".backup"));
}

Reference<TarvoRegistry> loadFile(const std::u16string& path,
                                  TARVO::Edition edition = TARVO::kNoEdition) {
    TARVO::platform::File file;
    require(TARVO::openRegistryExclusive(path, file) == RC_OK);
    TARVO::FileBytes bytes(file);
    require(bytes.readAll());
    auto root = TarvoRegistry::makeRoot(edition);
    TARVO::RegistryParser parser(root, {});
    require(parser.parse(bytes.view()) == TARVO::ParseOutcome::complete);
    return root;
}

std::string serialise(const TarvoRegistry& root) {
    return TARVO::registryText(root, u"{00000000-0000-0000-0000-000000000000}");
}

void writeFile(const std::u16string& path, const std::string& text) {
    TARVO::platform::File file;
    require(TARVO::openRegistryExclusive(path, file) == RC_OK);
    require(file.seekTo(0) && file.write(text) == text.size() && file.truncateHere());
}

void doParts(benchmark::State& state, std::size_t size) {
    const std::u16string path = registryFileOf(size).u16string();
    for (auto _ : state) {
        copyFile(path);
        benchmark::DoNotOptimize(serialise(*loadFile(path)));
    }
}

// Each step gets the file, its tree and its text.
using Step = std::function<void(const std::u16string&, const TarvoRegistry&, const std::string&)>;

void doStep(benchmark::State& state, std::size_t size, const Step& step) {
    const std::u16string path = registryFileOf(size).u16string();
    const auto root = loadFile(path);
    const std::string text = serialise(*root);
    for (auto _ : state)
        step(path, *root, text);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void replayOneValue(benchmark::State& state, std::size_t size) {
    const auto edits = std::make_shared<TARVO::EditState>(false);
    const auto root = loadFile(registryFileOf(size).u16string(), edits->edition);
    const auto rootKey = TARVO::makeObject<TARVO::TarvoRegistryKeyWriter>(edits, root, nullptr);
    KeyWriter key;
    require(rootKey->createKey(u"components/pmcs", key.out()) == RC_OK);
    require(key->table->setIntegerValue(key->me, u"changed", 1) == RC_OK);
    for (auto _ : state)
        rootKey->replayOn(root);
}

void serialiseByPugixml(benchmark::State& state, std::size_t size) {
    class Text : public pugi::xml_writer {
      public:
        std::string bytes;
        void write(const void* data, std::size_t count) override {
            bytes.append(static_cast<const char*>(data), count);
        }
    };
    pugi::xml_document document;
    require(document.load_file(registryFileOf(size).c_str()));
    std::int64_t bytes = 0;
    for (auto _ : state) {
        Text text;
        document.save(text, " ", pugi::format_indent | pugi::format_no_declaration);
        bytes += static_cast<std::int64_t>(text.bytes.size());
    }
    state.SetBytesProcessed(bytes);
}

// ---- the database ----

class Database {
  public:
    // Holds the values of a tree and waits for no disk, as the library doesn't.
    Database(const std::filesystem::path& path, const std::string& journal,
             const TarvoRegistry& root) {
        for (const char* ending : {"", "-journal", "-wal", "-shm"})
            std::filesystem::remove(path.string() + ending);
        require(sqlite3_open(path.c_str(), &connection_) == SQLITE_OK);
        execute("PRAGMA journal_mode = " + journal);
        execute("PRAGMA synchronous = OFF");
        execute("CREATE TABLE value (key TEXT, name TEXT, type INTEGER, content, "
                "PRIMARY KEY (key, name)) WITHOUT ROWID");
        execute("BEGIN");
        prepare("INSERT INTO value VALUES (?1, ?2, ?3, ?4)");
        insertAll(u"", root);
        execute("COMMIT");
        prepare("UPDATE value SET content = ?1 "
                "WHERE key = '/components/pmcs' AND name = 'changed'");
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() {
        sqlite3_finalize(statement_);
        sqlite3_close(connection_);
    }

    void commitOneValue(std::int32_t number) {
        sqlite3_bind_int(statement_, 1, number);
        step();
        require(sqlite3_changes(connection_) == 1);
    }

  private:
    void execute(const std::string& text) {
        require(sqlite3_exec(connection_, text.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
    }

    void prepare(const char* text) {
        sqlite3_finalize(statement_);
        require(sqlite3_prepare_v2(connection_, text, -1, &statement_, nullptr) == SQLITE_OK);
    }

    void bind(int place, std::u16string_view text) {
        sqlite3_bind_text16(statement_, place, text.data(), static_cast<int>(text.size() * 2),
                            SQLITE_STATIC);
    }

    void step() {
        require(sqlite3_step(statement_) == SQLITE_DONE);
        sqlite3_reset(statement_);
    }

    void insertAll(const std::u16string& path, const TarvoRegistry& key) {
        key.values.forEach([&](const TARVO::NamedValue& value) {
            bind(1, path);
            bind(2, value.name());
            sqlite3_bind_int(statement_, 3, static_cast<int>(value.type()));
            if (value.type() == TARVO::RegistryValueType::integer)
                sqlite3_bind_int(statement_, 4, value.integer());
            else
                bind(4, value.text());
            step();
        });
        key.subKeys.forEach([&](const TarvoRegistry& child) {
            insertAll(path + u"/" + std::u16string(child.name()), child);
        });
    }

    sqlite3* connection_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

void commitBySqlite(benchmark::State& state, std::size_t size, const char* journal) {
    const std::filesystem::path path = registryFileOf(size);
    Database database(path.parent_path() / "values.db", journal, *loadFile(path.u16string()));
    std::int32_t number = 0;
    for (auto _ : state)
        database.commitOneValue(++number);
}

// ---- what is run ----

constexpr struct {
    const char* name;
    std::size_t bytes;
} kSizes[] = {{"100 KB", 100'000}, {"1 MB", 1'000'000}, {"10 MB", 10'000'000}};

template <class Run, class... Arguments>
void add(const std::string& name, Run run, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), run, arguments...)->Unit(benchmark::kMicrosecond);
}

const bool kAdded = [] {
    for (const auto& [name, size] : kSizes) {
        const std::string commit = std::string("commit one value, ") + name;
        add(commit + "/tarvo", commitByTarvo, size);
        add(commit + "/copy, load, serialise", doParts, size);
        add(commit + "/sqlite, delete", commitBySqlite, size, "DELETE");
        add(commit + "/sqlite, wal", commitBySqlite, size, "WAL");

        const std::string step = std::string("step of ") + name + ": ";
        const auto addStep = [&, bytes = size](const char* what, const Step& run) {
            add(step + what, doStep, bytes, run);
        };
        addStep("copy", [](auto& path, auto&, auto&) { copyFile(path); });
        addStep("load", [](auto& path, auto&, auto&) { loadFile(path); });
        add(step + "replay", replayOneValue, size);
        addStep("write", [](auto& path, auto&, auto& text) { writeFile(path, text); });

        const std::string text = std::string("serialise a tree, ") + name;
        add(text + "/tarvo", doStep, size,
            Step([](auto&, auto& root, auto&) { benchmark::DoNotOptimize(serialise(root)); }));
        add(text + "/pugixml", serialiseByPugixml, size);
    }
    return true;
}();

} // namespace
