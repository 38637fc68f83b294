// The bag form: which items make which tree, and in which order they are asked for.
#include "tests/persistence/recording_reader.h"
#include "tests/persistence/state_support.h"
#include "tests/support/small_stack.h"

#include <tuple>

namespace {

using namespace tests;

using Items = std::map<std::u16string, tarvo::StateValue, std::less<>>;
using Texts = std::vector<std::u16string>;

tarvo::Value valueOf(const std::function<void(tarvo::Value&)>& set) {
    tarvo::Value value;
    set(value);
    return value;
}

const tarvo::StateValue kNone = tarvo::Value();

// State in the transition form of a bag.
Reference<IVaskPersistReader> bagState(Items items) {
    auto tree = std::make_shared<StateTree>();
    tree->values[u"TransitionFormat"] = u"PropertyBag";
    items.try_emplace(u"MORVENPersistenceVersion", 1);
    tree->addNode(u"data").values = std::move(items);
    return tarvo::offerState(tree);
}

// What comes of a bag: the tree as text, or the code.
std::string outcome(const Items& items, Recording& recording) {
    Component component;
    const auto state = RecordingReader::on(bagState(items), recording);
    const TarvoResult result = depersist(component, state.get());
    if (result != RC_OK)
        return std::to_string(result) + (component.log.empty() ? "" : " after load");
    return component.loaded == state ? "as it is" : shown(component.loaded.get());
}

std::string outcome(const Items& items) {
    Recording recording;
    return outcome(items, recording);
}

// A root with this one entry, stored as this value.
Items bagOf(const std::u16string& entry, const tarvo::StateValue& stored) {
    return {{u"valueNames", Texts{entry}}, {entry, stored}, {u"nodeNames", kNone}};
}

TEST(Bag, ConvertsWhatTheTableNamesAndNothingElse) {
    const std::pair<const char*, tarvo::StateValue> stored[] = {
        {"real", 2.5},
        {"int", -3},
        {"bool", true},
        {"string", u"text"},
        {"enum", tarvo::Enumeration{9}},
        {"value empty", kNone},
        {"value string", valueOf([](auto& value) { value.setText(u"inner"); })},
        {"value int", valueOf([](auto& value) { value.setInteger(7); })},
        {"value bool", valueOf([](auto& value) { value.setBoolean(7); })},
        {"value real", valueOf([](auto& value) { value.setReal(4.5); })},
        {"real[]", std::vector<double>{1, 2}},
        {"int[]", std::vector<std::int32_t>{1, -2}},
        {"bool[]", std::vector<bool>{true, false}},
        {"string[]", Texts{u"a", u""}},
        {"enum[]", std::vector<tarvo::Enumeration>{tarvo::Enumeration{3}}},
        {"value[]", std::vector<tarvo::Value>{tarvo::Value()}},
        {"byte[]", Bytes{1, 2}},
    };
    const struct {
        const char16_t* declared;
        const char* outcomes; // of the stored kinds that aren't refused
    } cases[] = {
        {u"real", "real: real 2.5; int: real -3.0; value empty: real nan; value int: real 7.0; "
                  "value real: real 4.5; "},
        {u"int", "int: int -3; value int: int 7; "},
        {u"bool", "int: bool 1; bool: bool 1; value int: bool 1; value bool: bool 7; "},
        {u"string", "string: string text; value empty: string ; value string: string inner; "},
        {u"enum", "int: enum 4294967293; enum: enum 9; value int: enum 7; "},
        {u"string,value", "string: value string:text; value empty: value string:; "
                          "value string: value string:inner; "},
        {u"int,value", "int: value int:-3; value int: value int:7; "},
        {u"bool,value", "int: value bool:1; bool: value bool:1; value int: value bool:1; "
                        "value bool: value bool:7; "},
        {u"real,value", "real: value real:2.5; int: value real:-3.0; value empty: value real:nan; "
                        "value int: value real:7.0; value real: value real:4.5; "},
        {u"real[]", "value empty: real[] []; real[]: real[] [1.0,2.0]; int[]: real[] []; "
                    "value[]: real[] []; "},
        {u"int[]", "value empty: int[] []; int[]: int[] [1,-2]; value[]: int[] []; "},
        {u"bool[]", "value empty: bool[] []; int[]: bool[] []; bool[]: bool[] [1,0]; "
                    "value[]: bool[] []; "},
        {u"string[]", "value empty: string[] []; string[]: string[] [a,]; value[]: string[] []; "},
        {u"enum[]", "value empty: enum[] []; int[]: enum[] [1,4294967294]; enum[]: enum[] [3]; "
                    "value[]: enum[] []; "},
        {u"value[]", "value empty: value[] []; real[]: value[] [real:1.0,real:2.0]; "
                     "int[]: value[] [int:1,int:-2]; bool[]: value[] [bool:1,bool:0]; "
                     "string[]: value[] [string:a,string:]; enum[]: value[] [int:3]; "
                     "value[]: value[] [empty]; "},
        {u"byte[]", "value empty: byte[] []; byte[]: byte[] [1,2]; "},
    };
    for (const auto& [declared, expected] : cases) {
        std::string outcomes;
        for (const auto& [name, value] : stored) {
            Recording recording;
            recording.isLenient = true;
            const std::string found =
                outcome(bagOf(std::u16string(u"v,") + declared, value), recording);
            if (found != "111")
                outcomes += std::string(name) + ": " + found.substr(3, found.size() - 4) + "; ";
        }
        EXPECT_EQ(outcomes, expected) << narrow(declared);
    }
    // Of a declared empty value nothing is read.
    for (const auto& [name, value] : stored) {
        Recording recording;
        EXPECT_EQ(outcome(bagOf(u"v,empty,value", value), recording), "{v=value empty}") << name;
        EXPECT_EQ(recording.calls.at(7), "GetValueType nodeNames");
    }
    // A reader that takes no null array fails the reads without a target.
    for (const auto& [declared, value] : {std::pair{u"v,real[]", stored[11].second},
                                          {u"v,bool[]", stored[11].second},
                                          {u"v,string[]", stored[15].second}})
        EXPECT_EQ(outcome(bagOf(declared, value)), "103") << narrow(declared);
}

TEST(Bag, TakesWhatStandsBehindTheLastComma) {
    const struct {
        std::u16string entry;
        const char* outcome;
    } cases[] = {
        {u"a,b,real", "{a,b=real 2.5}"},
        {u"a,real,value", "{a=value real:2.5}"},
        {u"a,b,real,value", "{a,b=value real:2.5}"},
        {u",real", "{=real 2.5}"},
        {u"real", "112"},
        {u"a,", "112"},
        {u"a,Real", "112"},
        {u"a,real ", "112"},
        {u"a,empty", "112"},
        {u"real,value", "112"},
        {u"a,int[],value", "112"},
    };
    for (const auto& [entry, expected] : cases) {
        Recording recording;
        EXPECT_EQ(outcome(bagOf(entry, 2.5), recording), expected) << narrow(entry);
        EXPECT_EQ(recording.calls.at(6), "GetValueType " + narrow(entry));
    }
}

TEST(Bag, ListsMustBeLists) {
    const auto set = [](auto& value) {
        value.setInteger(0);
    };
    const struct {
        Items items;
        const char* outcome;
    } cases[] = {
        {{{u"valueNames", kNone}, {u"nodeNames", kNone}}, "{}"},
        {{{u"valueNames", Texts()}, {u"nodeNames", Texts()}}, "{}"},
        {{{u"nodeNames", kNone}}, "107"},
        {{{u"valueNames", kNone}}, "107"},
        {{{u"valueNames", valueOf(set)}, {u"nodeNames", kNone}}, "111"},
        {{{u"valueNames", kNone}, {u"nodeNames", valueOf(set)}}, "111"},
        {{{u"valueNames", u"a,int"}, {u"nodeNames", kNone}}, "111"},
        {{{u"valueNames", std::vector<tarvo::Value>()}, {u"nodeNames", kNone}}, "111"},
        {{{u"valueNames", kNone}, {u"nodeNames", 1}}, "111"},
        {{{u"valueNames", Texts{u"a,int"}}, {u"nodeNames", kNone}}, "107"},
        {{{u"valueNames", kNone}, {u"nodeNames", Texts{u"a"}}}, "107"},
        {{{u"MORVENPersistenceVersion", 0}}, "as it is"},
        {{{u"MORVENPersistenceVersion", -1}}, "as it is"},
        {{{u"MORVENPersistenceVersion", 1.0}}, "as it is"},
        {{{u"MORVENPersistenceVersion", 9}, {u"valueNames", kNone}, {u"nodeNames", kNone}}, "{}"},
    };
    for (const auto& [items, expected] : cases)
        EXPECT_EQ(outcome(items), expected);
}

// A root with a real T and a child node A, which has two integers n and a child node B.
const Items kSmallBag = {{u"valueNames", Texts{u"T,real"}},
                         {u"T,real", 1.5},
                         {u"nodeNames", Texts{u"A", u"C"}},
                         {u"A//valueNames", Texts{u"n,int", u"n,bool"}},
                         {u"A//n,int", 1},
                         {u"A//n,bool", 2},
                         {u"A//nodeNames", Texts{u"B"}},
                         {u"A//B//valueNames", kNone},
                         {u"A//B//nodeNames", kNone},
                         {u"C//valueNames", kNone},
                         {u"C//nodeNames", kNone}};

TEST(Bag, IsAskedInOrder) {
    Recording recording;
    EXPECT_EQ(outcome(kSmallBag, recording), "{A={B={}; n=bool 1}; C={}; T=real 1.5}");
    const std::vector<std::string> calls = {"queryInterface",
                                            "GetString TransitionFormat",
                                            "GetNode data",
                                            "GetInteger MORVENPersistenceVersion",
                                            "GetValueType valueNames",
                                            "GetArrayString valueNames",
                                            "GetValueType T,real",
                                            "GetReal T,real",
                                            "GetValueType nodeNames",
                                            "GetArrayString nodeNames",
                                            "GetValueType A//valueNames",
                                            "GetArrayString A//valueNames",
                                            "GetValueType A//n,int",
                                            "GetInteger A//n,int",
                                            "GetValueType A//n,bool",
                                            "GetInteger A//n,bool",
                                            "GetValueType A//nodeNames",
                                            "GetArrayString A//nodeNames",
                                            "GetValueType A//B//valueNames",
                                            "GetValue A//B//valueNames",
                                            "GetValueType A//B//nodeNames",
                                            "GetValue A//B//nodeNames",
                                            "GetValueType C//valueNames",
                                            "GetValue C//valueNames",
                                            "GetValueType C//nodeNames",
                                            "GetValue C//nodeNames"};
    EXPECT_EQ(recording.calls, calls);
    EXPECT_EQ(recording.living, 0);
}

TEST(Bag, FailsWithTheCodeOfTheReader) {
    const std::vector<std::string> own = {"105", "104", "104", "as it is"};
    Recording whole;
    outcome(kSmallBag, whole);
    for (std::size_t i = 0; i < whole.calls.size(); ++i)
        for (const TarvoResult failure : {55u, 1u}) {
            Recording recording;
            recording.failAt = i;
            recording.failure = failure;
            EXPECT_EQ(outcome(kSmallBag, recording),
                      i < own.size() ? own[i] : std::to_string(failure))
                << whole.calls[i];
            // The detail is asked for at once, of whom failed.
            EXPECT_EQ(std::ranges::count(recording.calls, "getLastError"),
                      failure == 1 && i > 0 ? 1 : 0);
            EXPECT_EQ(recording.living, 0);
        }
}

// A bag whose nodes go on down to a level, each with the same children, without a value anywhere.
class DeepBag final : public tarvo::StateSource {
  public:
    DeepBag(std::size_t levels, Texts children) : levels_(levels), children_(children) {}

  private:
    std::vector<std::u16string> valueNames() override { return {}; }
    std::vector<std::u16string> nodeNames() override { return {}; }
    const tarvo::StateValue* findValue(std::u16string_view name) override {
        static const tarvo::StateValue kForm = u"PropertyBag";
        static const tarvo::StateValue kVersion = 1;
        if (name == u"TransitionFormat")
            return &kForm;
        if (name == u"MORVENPersistenceVersion")
            return &kVersion;
        const bool goesOn = name.ends_with(u"nodeNames") && name.size() / 3 < levels_ + 3;
        return goesOn ? &children_ : &kNone;
    }
    Reference<IVaskPersistReader> openNode(std::u16string_view) override {
        return Reference<IVaskPersistReader>::share(pair());
    }

    std::size_t levels_; // each has three units: "n//"
    tarvo::StateValue children_;
};

TEST(Bag, CanBeAThousandLevelsDeep) {
    runWithSmallStack([] {
        for (const auto& [levels, result] :
             {std::pair{1000u, RC_OK}, {1001u, RC_BAD_DATA}, {1000000u, RC_BAD_DATA}}) {
            const auto bag = Reference<tarvo::StateSource>::share(new DeepBag(levels, {u"n"}));
            Component component;
            EXPECT_EQ(depersist(component, bag->pair()), result) << levels;
        }
    });
}

TEST(Bag, DoesNotGrowWithoutBoundFromRepeatedNames) {
    for (const auto& [levels, result] :
         {std::pair{6u, RC_OK}, {7u, RC_BAD_DATA}, {100u, RC_BAD_DATA}}) {
        const auto bag = Reference<tarvo::StateSource>::share(new DeepBag(levels, {u"n", u"n"}));
        Component component;
        EXPECT_EQ(depersist(component, bag->pair()), result) << levels;
    }
}

} // namespace
