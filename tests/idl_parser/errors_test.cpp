// What is wrong with a definition: where it is, what was expected, and what else there is.
#include "tests/idl_parser/parsing.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using tests::inLibrary;
using tests::takeMarks;
using tests::textIn;

std::string errorsOf(const TemporaryFolder& folder, const std::string& written) {
    return textIn(folder, folder.write(u"a", written)) + "\n";
}

TEST(DefinitionErrors, TellPlaceAndExpectation) {
    const std::string id = "[uuid(00000000-0000-0000-0000-00000000000";
    const struct {
        std::string marked;
        const char* messages;
    } cases[] = {
        // words
        {"\n  library^", "expected the name of the library, found the end of the file"},
        {"^ä#", "expected 'library' or 'import', found 'ä'"},
        {std::string("^\0", 2), "expected 'library' or 'import', found the character 0x00"},
        {inLibrary("/* ä */ ^#\n;" + id + "2)] category^;"),
         "expected 'category', 'enum' or 'interface', found '#'\n"
         "expected the name of the category, found ';'"},
        {"import \"a\"^ /**/", "expected ';' here, before the end of the file"},
        {"^/* /", "the comment that begins here has no end"},
        {"import ^\"a\nimport ^\"\\n\";import ^\"\x01\";",
         "the text that begins here has no closing '\"' in its line\n"
         "a text knows the escapes \\\" and \\\\ alone; paths may have / as well\n"
         "a text can't hold control characters"},
        // attributes
        {"[uuid(^123)] library A{} [uuid^] library B{} "
         "[uuid(^3b78cdeb-7fe8-4542-b58b+26205774d82a)] library C{} "
         "[uuid(^g0000000-0000-0000-0000-000000000000)] library D{} "
         "[uuid({^00000000-0000-0000-0000-000000000000})] library E{}",
         "expected an identifier such as 3b78cdeb-7fe8-4542-b58b-26205774d82a, found '123'\n"
         "expected '(', found ']'\n"
         "expected an identifier such as 3b78cdeb-7fe8-4542-b58b-26205774d82a, found '3b78cdeb'\n"
         "'g0000000-0000-0000-0000-000000000000' is no identifier: they look like "
         "3b78cdeb-7fe8-4542-b58b-26205774d82a\n"
         "the identifier with nothing but zeros stands for none"},
        {"library ^A { category ^C; enum ^E {} interface ^I {} }",
         "the library 'A' needs an identifier: [uuid(...)] before 'library'\n"
         "the category 'C' needs an identifier: [uuid(...)] before 'category'\n"
         "the enumeration 'E' needs an identifier: [uuid(...)] before 'enum'\n"
         "the interface 'I' needs an identifier: [uuid(...)] before 'interface'"},
        {id + "1), a, b(^), a, version(1.x)] library A { category ^C; }",
         "expected the value of the attribute: a quoted text, a number or a name, found ')'\n"
         "the category 'C' needs an identifier: [uuid(...)] before 'category'"},
        {id + "1), a, version(^1.x), ^a] library A {}" + id + "2), ^version] library B {}" + id +
             "3), version(^2147483648.1)] library C {}",
         "a version is numbers with points between them, such as 1.2.0\n"
         "the attribute 'a' is there twice\n"
         "a version is numbers with points between them, such as 1.2.0\n"
         "a version is numbers with points between them, such as 1.2.0"},
        // going on behind an error
        {inLibrary(id + "2)] category A^\n" + id +
                   "3)] enum E { a = ^x, b ^c, d = ^4294967296, e }" + id +
                   "4)] interface I { result f(^integer a); string^; result g(in ^void x)^ }"),
         "expected ';' here, before '['\n"
         "expected a number, found 'x'\n"
         "expected ',' or '}', found 'c'\n"
         "'4294967296' is no whole number from 0 to 4294967295\n"
         "expected 'in', 'out' or 'inout', found 'integer'\n"
         "expected the name of the method, found ';'\n"
         "'void' is for the results of methods alone\n"
         "expected ';' here, before '}'"},
        {"[a] ^} ^interface I { void f(); } import ^5; library^",
         "expected 'library' or 'import', found '}'\n"
         "expected 'library' or 'import', found 'interface'\n"
         "expected the path of a file in quotes, found '5'\n"
         "expected the name of the library, found the end of the file"},
        {inLibrary(id + "2)] interface I { void f(in A<integer^; void g(in A<B ^C);") + "^",
         "expected ',' or '>', found ';'\n"
         "expected ',' or '>', found 'C'\n"
         "expected '}', found the end of the file"},
        {inLibrary(id + "2)] enum E { a = 4294967295, ^b }" + id + "3)] interface ^A.B {}"),
         "the value of 'b' would be beyond 4294967295\n"
         "expected a name without points, found 'A.B'"},
        // names
        {inLibrary(id + "2)] category A; " + id + "3)] interface ^A<T,^T> {}" + id +
                   "2)] enum ^E {a, b, ^a}" + id +
                   "4)] interface ^string<^real> { void f(in byte a, in byte ^a); void ^f(); }") +
             id + "1)] library ^^L {}",
         "'A' is the name of something else in this library\n"
         "'T' is defined before in this list\n"
         "'E' has the identifier of 'A'\n"
         "'a' is defined before in this list\n"
         "'string' is a type of the language's own\n"
         "'real' is a type of the language's own\n"
         "'a' is defined before in this list\n"
         "'f' is defined before in this list\n"
         "there is another library 'L'\n"
         "'L' has the identifier of 'L'"},
        // types
        {inLibrary(id + "2)] category C; " + id +
                   "3)] interface ^I<T> : E {\n"
                   "void a(in ^C c, in ^M.I m, in L.^J j, in ^N n, in ^I i, in ^E<real> e);\n"
                   "E c(); ^N d(); T ^e(); string ^f(); }\n" +
                   id + "4)] enum E {}"),
         "the base of 'I' is no interface\n"
         "'C' is a category and no type\n"
         "there is no library 'M' in this file or in those that it imports\n"
         "the library 'L' has no 'J'\n"
         "there is no 'N' in this file or in those that it imports\n"
         "'I' takes 1 template arguments and not 0\n"
         "'E' takes 0 template arguments and not 1\n"
         "there is no 'N' in this file or in those that it imports\n"
         "'e' can't have such a result: it is void, result, a number or of an enumeration, and all "
         "else goes out through parameters\n"
         "'f' can't have such a result: it is void, result, a number or of an enumeration, and all "
         "else goes out through parameters"},
        {inLibrary(id +
                   "2)] interface I<T> {\n"
                   "void g(in T^[] a, in uuid^[] b, in E[] c, in ^N[] d, in I<real>^[] e,\n"
                   "inout I<E> ^f, inout ^N g, inout T h, inout IVaskInterface ^i); }\n" +
                   id + "4)] enum E {}"),
         "there are arrays of real, integer, byte, boolean, string, value and of enumerations "
         "alone\n"
         "there are arrays of real, integer, byte, boolean, string, value and of enumerations "
         "alone\n"
         "there is no 'N' in this file or in those that it imports\n"
         "there are arrays of real, integer, byte, boolean, string, value and of enumerations "
         "alone\n"
         "'f' is an interface, which goes in or out\n"
         "there is no 'N' in this file or in those that it imports\n"
         "'i' is an interface, which goes in or out"},
        {inLibrary(id + "2)] interface I : ^B {}") + id + "3)] library M {" + id +
             "4)] interface B {}}" + id + "5)] library N {" + id + "6)] interface B {}}",
         "'B' is in more than one library: write M.B or N.B"},
    };
    const TemporaryFolder folder;
    for (const auto& one : cases) {
        std::string written = one.marked;
        std::string_view messages = one.messages;
        const std::string expected = takeMarks(written, "a", messages);
        EXPECT_EQ(messages, "") << one.marked;
        EXPECT_EQ(errorsOf(folder, written), expected) << one.marked;
    }
}

TEST(DefinitionErrors, AreTwentyAtMost) {
    const TemporaryFolder folder;
    for (const std::size_t count : {20, 21, 100'000}) {
        std::string written;
        for (std::size_t i = 0; i < count; ++i)
            written += "import;";
        const std::string errors = errorsOf(folder, written);
        const bool hasMore = errors.ends_with("\nThere are more errors behind these.\n");
        EXPECT_EQ(hasMore, count > 20);
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), hasMore ? 21 : 20);
    }
}

} // namespace
