// What the language can say, and that all of it is in the parse result.
#include "tests/idl_parser/parsing.h"
#include "tests/support/small_stack.h"

#include <tarvo/result.h>
#include <tarvo/text.hpp>

#include <gtest/gtest.h>
#include <vector>

namespace {

using tests::inLibrary;
using tests::parse;
using tests::textIn;

struct Case {
    const char* what;
    std::string written;
    std::string understood;
};

TEST(DefinitionLanguage, IsUnderstoodAsItIsMeant) {
    const std::string id = "[uuid(00000000-0000-0000-0000-00000000000";
    const std::string library = id + "1)] library L {\n";
    const Case cases[] = {
        {"nothing", " /* nothing */ ", ""},
        {"the rest of the line", "// comment", ""},
        {"two libraries, with all ways to write an identifier",
         "[uuid({ABCDEF00-0000-0000-0000-000000000001})]library A{};[ uuid ( "
         "abcdef00-0000-0000-0000-000000000002 ) ] library B.C { }",
         "[uuid(abcdef00-0000-0000-0000-000000000001)] library A {\n}\n"
         "[uuid(abcdef00-0000-0000-0000-000000000002)] library B.C {\n}\n"},
        {"attributes",
         "[version(1.2.3),uuid(00000000-0000-0000-0000-000000000001),a,b(\"\"),c(x.y),"
         "d(\"\\\"\\\\ ä\")] library L {}",
         id + "1), version(\"1.2.3\"), a, b, c(\"x.y\"), d(\"\\\"\\\\ ä\")] library L {\n}\n"},
        {"documentation",
         inLibrary("/// one\r\n///   two\r\n\r\n///\n// none\n" + id +
                   "2)] category A;\n"
                   "/// replaced\n/** one\n * two\n\n   three*/\n" +
                   id +
                   "3)] category B;\n"
                   "/*** none */ //// none\n/**/" +
                   id + "4)] category C; /// of nothing\n"),
         library + " /// one\n /// " + "  two\n " + id + "2)] category A;\n" +
             " /// one\n /// two\n /// \n ///    three\n " + id + "3)] category B;\n " + id +
             "4)] category C;\n}\n"},
        {"enumerators",
         inLibrary(id + "2)] enum E { a, b = 0xFF, [x] c, d = 4294967295, };" + id +
                   "3)] enum None {}"),
         library + " " + id +
             "2)] enum E {\n  a = 0,\n  b = 255,\n  [x] c = 256,\n"
             "  d = 4294967295,\n }\n " +
             id + "3)] enum None {\n }\n}\n"},
        {"words of the language as names",
         inLibrary(id + "2)] interface library { result in(in in in, inout enum[] value); }" + id +
                   "3)] enum enum { category }" + id + "4)] interface in { void result(); }"),
         library + " " + id + "3)] enum enum {\n  category = 0,\n }\n " + id +
             "2)] interface library {\n  result in(in in in, inout enum[] value);\n }\n " + id +
             "4)] interface in {\n  void result();\n }\n}\n"},
        {"types of several libraries",
         inLibrary(id +
                   "2)] interface A<T,U> : C<A<U,T>,string[]> { integer a(out T t, in M.B "
                   "b, in U u); boolean b(in ITarvoBase b, inout real r, out A<T,value> v);}") +
             id + "3)] library M {" + id + "4)] interface B:IVaskInterface{ M.E e(in byte[] b);" +
             "unsigned u(in uuid i, in result r);}" + id + "5)] enum E {}}" + id +
             "6)] library N {" + id + "7)] interface C<T,U> {}}",
         library + " " + id +
             "2)] interface A<T, U> : N.C<A<U, T>, string[]> {\n"
             "  integer a(out T t, in M.B b, in U u);\n"
             "  boolean b(in ITarvoBase b, inout real r, out A<T, value> v);\n }\n}\n" +
             id + "3)] library M {\n " + id + "5)] enum E {\n }\n " + id +
             "4)] interface B : IVaskInterface {\n  E e(in byte[] b);\n"
             "  unsigned u(in uuid i, in result r);\n }\n}\n" +
             id + "6)] library N {\n " + id + "7)] interface C<T, U> {\n }\n}\n"},
    };
    const TemporaryFolder folder;
    for (const Case& one : cases) {
        const std::string text = textIn(folder, folder.write(u"L.tidl", one.written));
        EXPECT_EQ(text, one.understood) << one.what;
        EXPECT_EQ(textIn(folder, folder.write(u"L.tidl", text)), text) << one.what;
    }
}

TEST(DefinitionLanguage, DocumentsExampleIsCorrect) {
    const std::string document = TemporaryFolder::textOf(tests::wide(LANGUAGE_DOCUMENT));
    const TemporaryFolder folder;
    std::size_t end = 0;
    const auto nextBlock = [&] {
        const std::string_view opening = "```tidl\n";
        const std::size_t start = document.find(opening, end) + opening.size();
        end = document.find("```\n", start);
        return document.substr(start, end - start);
    };
    folder.write(u"shapes.tidl", nextBlock());
    const std::u16string path = folder.write(u"brushes.tidl", nextBlock());
    const std::string text = textIn(folder, path);
    EXPECT_NE(text.find("library Brushes {"), std::string::npos) << text;
    EXPECT_NE(text.find("/// \n /// The text of a comment keeps its lines, without the stars."),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("out Shapes.IList<Shapes.IShape> shapes);"), std::string::npos) << text;
}

TEST(DefinitionLanguage, ShippedCategoriesCanBeRead) {
    const auto result = parse(tests::wide(SHIPPED_DEFINITION).c_str());
    const std::string text = tests::definitionText(result.get());
    const std::string library = "[uuid(3b78cdeb-7fe8-4542-b58b-26205774d82a), version(\"1.0\")]";
    EXPECT_NE(text.find(library), std::string::npos) << text;
    for (const char* category :
         {"678c09a1-7d66-11d2-a67d-00105a42887f", "0d562dc8-ea8e-4210-ab39-b66513c0cd09",
          "4150c28a-ee06-403f-a871-87afec38a249", "4667023a-5a8e-4cca-ab6d-9d78c5112fed",
          "37e03033-63b9-4f55-b5c4-807bede03deb", "cf51e383-0110-4ed8-acb7-b50cfde6908e",
          "cf51e384-0110-4ed8-acb7-b50cfde6908e", "cf51e385-0110-4ed8-acb7-b50cfde6908e",
          "cf51e386-0110-4ed8-acb7-b50cfde6908e", "678c09a5-7d66-11d2-a67d-00105a42887f",
          "7ba1af89-b2e4-493d-bd80-2970bf4cbe99"})
        EXPECT_NE(text.find(" [uuid(" + std::string(category) + ")] category "), std::string::npos)
            << category;
}

// What a caller may do wrong, and what it may rely on.
TEST(DefinitionObjects, KeepTheRulesOfSlots) {
    const TemporaryFolder folder;
    const auto path =
        folder.write(u"a.tidl", "[uuid(00000000-0000-0000-0000-000000000001)] library A {\n"
                                "[uuid(00000000-0000-0000-0000-000000000002)] category C; }");
    auto result = parse(path.c_str());
    const auto* table = result->table;
    tarvo::Reference<IVaskIDLLibrary> library;
    EXPECT_EQ(table->getLibrary(result->me, 0, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getErrorMessage(result->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getLibrary(result->me, 0xFFFFFFFF, library.out()), RC_NOT_AVAILABLE);
    EXPECT_EQ(table->getImportedLibraryCount(result->me), 0);
    ASSERT_EQ(table->getLibrary(result->me, 0, library.out()), RC_OK);
    result = nullptr; // the library lives on, and its items with it

    tarvo::ConstantString version(u"version");
    tarvo::String text(u"before");
    const auto* slots = library->table;
    EXPECT_EQ(slots->getAttribute(library->me, version.pair(), text.pair()), RC_NOT_AVAILABLE);
    EXPECT_EQ(text.text(), u"before");
    EXPECT_EQ(slots->getAttribute(library->me, nullptr, text.pair()), RC_NULL_POINTER);
    EXPECT_EQ(slots->getAttribute(library->me, version.pair(), nullptr), RC_NULL_POINTER);
    EXPECT_EQ(slots->getName(library->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(slots->getName(library->me, version.pair()), RC_READ_ONLY);
    EXPECT_EQ(slots->getSourcePath(library->me, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), path);

    IVaskIDLItem* item = nullptr;
    IVaskIDLType* type = nullptr;
    EXPECT_EQ(slots->getCategory(library->me, 0, nullptr), RC_NULL_POINTER);
    ASSERT_EQ(slots->getCategory(library->me, 0, &item), RC_OK);
    EXPECT_EQ(item->table->getNumberOfTemplateArguments(item->me), 0);
    EXPECT_EQ(item->table->getType(item->me, &type), RC_NOT_AVAILABLE);
    EXPECT_EQ(item->table->getUUID(item->me)->bytes[15], 2);
    item->table->addReference(item->me); // keeps the library too
    library = nullptr;
    EXPECT_EQ(item->table->getName(item->me, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"C");
    item->table->release(item->me);
}

std::string repeated(const char* piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

// However deep a definition nests, the stack of a thread suffices.
TEST(DefinitionLanguage, NestsWithoutTheStack) {
    tests::runWithSmallStack([] {
        constexpr std::size_t kDepth = 100'000;
        const std::string interface = "[uuid(00000000-0000-0000-0000-0000000";
        std::string bases;
        for (std::size_t i = 10'000; i < 60'000; ++i)
            bases += interface + std::to_string(i) + ")] interface I" + std::to_string(i) + " : I" +
                     std::to_string(i == 59'999 ? 10'000 : i + 1) + " {}\n";
        const std::string list = interface + "60000)] interface L<T> { void f(in ";
        const struct {
            std::string text;
            const char* message;
        } cases[] = {
            {inLibrary(list + repeated("L<", kDepth) + "byte" + repeated(">", kDepth) + " a); }"),
             ""},
            {inLibrary(bases), "'I10000' is among its own bases"},
            {inLibrary(list + repeated("L<", kDepth)), "expected a type, found '}'"},
            {repeated("[uuid(", kDepth), "expected an identifier"},
            {inLibrary(repeated("{", kDepth)), "expected 'category', 'enum' or 'interface'"},
        };
        const TemporaryFolder folder;
        for (const auto& one : cases) {
            const auto result = parse(folder.write(u"a.tidl", one.text).c_str());
            tarvo::String message;
            EXPECT_EQ(result->table->getErrorMessage(result->me, message.pair()), RC_OK);
            EXPECT_NE(message.text().find(tests::wide(one.message)), std::u16string::npos)
                << one.message;
            EXPECT_EQ(message.text().empty(), *one.message == '\0');
        }
    });
}

} // namespace
