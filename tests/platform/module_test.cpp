#include "platform/file.h"
#include "platform/module.h"
#include "platform/text.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>
#include <iostream>

namespace {

constexpr const char16_t* kTestModule = TARVO_TEST_MODULE;

// Makes a folder the current one for as long as the object lives.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::filesystem::path& path) {
        std::filesystem::current_path(path);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { std::filesystem::current_path(before_); }

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

std::u16string pathToldBy(TARVO::platform::ModuleHandle module) {
    const auto tell =
        reinterpret_cast<const char16_t* (*)()>(TARVO::platform::findSymbol(module, "modulePath"));
    return tell ? tell() : u"";
}

TEST(Module, IsLoadedSearchedAndFreed) {
    const auto module = TARVO::platform::loadModule(kTestModule);
    ASSERT_TRUE(module);
    const auto answer = reinterpret_cast<int (*)()>(TARVO::platform::findSymbol(module, "answer"));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(TARVO::platform::findSymbol(module, "question"), nullptr);
    EXPECT_EQ(TARVO::platform::findSymbol(module, "Answer"), nullptr);
    TARVO::platform::freeModule(module);
    TARVO::platform::freeModule(nullptr);
}

TEST(Module, IsNotLoadedFromWhatIsNone) {
    const TemporaryFolder folder;
    for (const auto& path :
         {folder / u"missing.dll", folder.path(), folder.write(u"text.dll", "no module"),
          std::u16string{TARVO_TEST_PIPE}, std::u16string{}}) {
        const TARVO::platform::LoadedModule module{path};
        EXPECT_FALSE(module);
        EXPECT_FALSE(module.error().text.empty());
    }
}

TEST(Module, IsFoundWhateverTheCase) {
    const TemporaryFolder folder;
    ASSERT_TRUE(TARVO::platform::copyFileOver(kTestModule, folder / u"Mixed.Dll"));
    const auto module = TARVO::platform::loadModule(folder / u"mixed.dll");
    ASSERT_TRUE(module);
    EXPECT_TRUE(TARVO::platform::isSameFile(pathToldBy(module), folder / u"Mixed.Dll"));
    TARVO::platform::freeModule(module);
}

// Alone in a process, since the module must not have been loaded before.
void loadByRelativePath() {
    const TemporaryFolder folder;
    TARVO::platform::copyFileOver(kTestModule, folder / u"copy.dll");
    std::u16string told;
    {
        const CurrentFolder inFolder{folder.path()};
        const auto module = TARVO::platform::loadModule(u"./copy.dll");
        const CurrentFolder elsewhere{std::filesystem::temp_directory_path()};
        told = pathToldBy(module);
    }
    std::cout << TARVO::platform::isSameFile(told, folder / u"copy.dll") << std::endl;
}
const support::Role kRelativeLoader{"relative loader", loadByRelativePath};

TEST(Module, KnowsItsFullPathThoughItWasLoadedByARelativeOne) {
    EXPECT_EQ(support::Process{"relative loader"}.receive(), "1");
}

void tellOwnPath() {
    std::string path;
    TARVO::platform::appendUtf8(TARVO::platform::ownModulePath(), path);
    std::cout << path << std::endl;
}
const support::Role kPathTeller{"path teller", tellOwnPath};

TEST(Module, KnowsThePathOfTheProgramThatItIs) {
    std::u16string told;
    TARVO::platform::appendUtf16(support::Process{"path teller"}.receive().value_or(""), told);
    EXPECT_EQ(told, TARVO::platform::ownModulePath());
    EXPECT_TRUE(std::filesystem::path{told}.is_absolute());
    EXPECT_EQ(std::filesystem::path{told}.stem(), "test_platform");
    EXPECT_FALSE(TARVO::platform::isSameFile(told, kTestModule));
}

} // namespace
