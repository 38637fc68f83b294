// The files of a definition: how they are found, what their libraries see of each other, and files
// that can't be read.
#include "tests/idl_parser/parsing.h"

#include <tarvo/text.hpp>

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace {

using tests::textIn;

// A library named like its file, with an interface I, and one that uses others.
std::string fileWith(const std::string& imports, char name, const std::string& uses = "") {
    const std::string id = "[uuid(00000000-0000-0000-0000-0000000000";
    return imports + "\n" + id + name + "0)] library " + name + " {\n" + id + name +
           "1)] interface I {}\n" + id + name + "2)] interface U {" + uses + "}}";
}

TEST(DefinitionFiles, ImportEachOther) {
    using Files = std::vector<std::pair<std::string, std::string>>;
    const std::string byName = "[uuid(00000000-0000-0000-0000-0000000000b0)] import \"^b.tidl\";";
    const struct {
        const char* what;
        Files files; // the first is the definition; errors are marked
        const char* messages;
    } cases[] = {
        {"by two ways, and spelled in two ways",
         {{"a", fileWith("import \"b\";import \"./c\";", 'a', "void f(in b.I b, in c.I c);")},
          {"b", fileWith("import \"c\";", 'b', "void f(in I i, in c.I c);")},
          {"c", fileWith("", 'c')}},
         ""},
        {"of other folders",
         {{"a", fileWith("import \"deep\\\\er/b\";", 'a', "void f(in b.I b);")},
          {"deep/er/b", fileWith("import \"../c\";", 'b', "void f(in c.I c);")},
          {"deep/c", fileWith("", 'c')}},
         ""},
        {"and see what they import themselves alone",
         {{"a", fileWith("import \"b\";", 'a', "void f(in b.I b, in ^c.I c);")},
          {"b", fileWith("import \"c\";", 'b')},
          {"c", fileWith("", 'c')}},
         "there is no library 'c' in this file or in those that it imports"},
        {"under the name of a library",
         {{"a", fileWith(byName, 'a', "void f(in b.I b);")},
          {"00000000-0000-0000-0000-0000000000B0.tidl", fileWith("", 'b')}},
         ""},
        {"with the library that is asked for",
         {{"a", fileWith(byName, 'a')}, {"b.tidl", fileWith("", 'c')}},
         "'b.tidl' has no library with this identifier"},
        {"and are not there",
         {{"a", fileWith("import \"^b\";import \"^deep/b\";", 'a')}},
         "'b' can't be imported: the file is not there\n"
         "'deep/b' can't be imported: the file is not there"},
        {"in a circle",
         {{"a", fileWith("import \"b\";", 'a')},
          {"b", fileWith("import \"c\";import \"^b\";", 'b')},
          {"c", fileWith("import \"^a\";", 'c')}},
         "'b' closes a circle of imports\n'a' closes a circle of imports"},
        {"with errors of their own",
         {{"a", "import \"b\"; library^"}, {"b", "import^"}},
         "expected the name of the library, found the end of the file\n"
         "expected the path of a file in quotes, found the end of the file"},
        {"and take what another has",
         {{"a", fileWith("import \"b\";", 'b')},
          {"b", "[uuid(00000000-0000-0000-0000-0000000000b0)] library ^^b {}"}},
         "there is another library 'b'\n'b' has the identifier of 'b'"},
    };
    for (const auto& one : cases) {
        const TemporaryFolder folder;
        TARVO::platform::createFolder(folder / u"deep");
        TARVO::platform::createFolder(folder / u"deep/er");
        std::string_view messages = one.messages;
        std::string errors;
        for (auto [name, text] : one.files) {
            errors += tests::takeMarks(text, name, messages);
            folder.write(tests::wide(name), text);
        }
        const std::string text = textIn(folder, folder / u"a");
        if (*one.messages != '\0')
            EXPECT_EQ(text + "\n", errors) << one.what;
        else
            EXPECT_NE(text.find("library a {"), std::string::npos) << one.what << ": " << text;
    }
}

TEST(DefinitionFiles, ShowImportedLibrariesApart) {
    const TemporaryFolder folder;
    folder.write(u"b", fileWith("", 'b'));
    const auto result = tests::parse(folder.write(u"a", fileWith("import \"b\";", 'a')).c_str());
    const auto* table = result->table;
    ASSERT_EQ(table->getLibraryCount(result->me), 1);
    ASSERT_EQ(table->getImportedLibraryCount(result->me), 1);
    tarvo::Reference<IVaskIDLLibrary> library;
    ASSERT_EQ(table->getImportedLibrary(result->me, 0, library.out()), RC_OK);
    tarvo::String path;
    EXPECT_EQ(library->table->getSourcePath(library->me, path.pair()), RC_OK);
    EXPECT_EQ(path.text(), folder / u"b");
}

TEST(DefinitionFiles, ThatCannotBeReadAreErrors) {
    const TemporaryFolder folder;
    const struct {
        const char16_t* name;
        const char* text;
    } cases[] = {
        {u"none", "none: the file is not there"},
        {u".", ".: access is denied"},
        {u"utf-16", "utf-16: it is UTF-16, and definitions are UTF-8"},
        {u"mark", "mark:1:2: expected 'library' or 'import', found '!'"},
        {u"empty", ""},
    };
    folder.write(u"utf-16", "\xFF\xFE/\0");
    folder.write(u"mark", "\xEF\xBB\xBF !");
    folder.write(u"empty", "");
    for (const auto& one : cases)
        EXPECT_EQ(textIn(folder, folder / one.name), one.text);
    for (const char16_t* path : {static_cast<const char16_t*>(nullptr), u""})
        EXPECT_EQ(tests::definitionText(tests::parse(path).get()), "No definition file is named.");
}

} // namespace
