// The two exports: which state they take for what, and what becomes of the objects they are given.
#include "tests/persistence/recording_reader.h"
#include "tests/persistence/state_support.h"

namespace {

using namespace tests;

// A tree with a marker node, as COM leaves it.
std::shared_ptr<StateTree> marked(const char16_t* comType) {
    auto tree = std::make_shared<StateTree>();
    tree->values[u"data"] = Bytes{1, 2};
    tree->values[u"x"] = 1;
    tree->addNode(u"TARVO").values[u"comType"] = comType;
    tree->addNode(u"other").values[u"y"] = 2;
    return tree;
}

// What tarvoDepersistFromTransitionFormat makes of state: the tree as text.
std::string transition(IVaskPersistReader* state) {
    auto* const reader = reinterpret_cast<IVaskInterface*>(state);
    Reference<IVaskInterface> out;
    EXPECT_EQ(TARVO_CALL(tarvoDepersistFromTransitionFormat)(reader, out.out(), 1, 2), RC_OK);
    if (!out)
        return "untouched";
    if (out.get() == reader)
        return "itself";
    Reference<IVaskPersistReader> shows;
    EXPECT_EQ(out->table->queryInterface(out->me, &kIVaskPersistReaderId,
                                         reinterpret_cast<IVaskInterface**>(shows.out())),
              RC_OK);
    return shown(shows.get());
}

std::string transition(const std::shared_ptr<StateTree>& tree, Recording& recording) {
    const auto reader = RecordingReader::on(tarvo::offerState(tree), recording);
    return transition(reader.get());
}

TEST(FromTransitionFormat, KnowsStateByItsMarks) {
    const auto with = [](std::shared_ptr<StateTree> tree, const char16_t* name,
                         tarvo::StateValue value) {
        tree->values[name] = std::move(value);
        return tree;
    };
    auto withoutType = marked(u"Stream");
    withoutType->nodes[u"TARVO"]->values.clear();
    auto withoutData = marked(u"Stream");
    withoutData->values.erase(u"data");
    auto wrongType = marked(u"");
    wrongType->nodes[u"TARVO"]->values[u"comType"] = 1;
    const struct {
        std::shared_ptr<StateTree> tree;
        const char* outcome;
    } cases[] = {
        {std::make_shared<StateTree>(), "untouched"},
        {with(marked(u"Stream"), u"TransitionFormat", u"Stream"), "itself"},
        {with(marked(u"Stream"), u"TransitionFormat", u"PropertyBag"), "itself"},
        {with(marked(u"Stream"), u"TransitionFormat", u"stream"),
         "{TransitionFormat=string Stream; data=byte[] [1,2]}"},
        {with(marked(u"Stream"), u"TransitionFormat", 1), "untouched"},
        {marked(u"Stream"), "{TransitionFormat=string Stream; data=byte[] [1,2]}"},
        {marked(u"PropertyBag"),
         "{TransitionFormat=string PropertyBag; data=byte[] [1,2]; x=int 1}"},
        {with(marked(u"PropertyBag"), u"TransitionFormat", u"x"),
         "{TransitionFormat=string PropertyBag; data=byte[] [1,2]; x=int 1}"},
        {marked(u"File"), "untouched"},
        {withoutType, "untouched"},
        {withoutData, "untouched"},
        {wrongType, "untouched"},
    };
    for (const auto& [tree, expected] : cases) {
        Recording recording;
        EXPECT_EQ(transition(tree, recording), expected);
        EXPECT_EQ(recording.living, 0);
    }
}

TEST(FromTransitionFormat, AsksInOrder) {
    Recording stream;
    transition(marked(u"Stream"), stream);
    EXPECT_EQ(stream.calls, (std::vector<std::string>{"queryInterface", "ValueNames", "NodeNames",
                                                      "GetNode TARVO", "ValueNames",
                                                      "GetString comType", "GetArrayByte data"}));
    Recording bag;
    transition(marked(u"PropertyBag"), bag);
    EXPECT_EQ(bag.calls, (std::vector<std::string>{
                             "queryInterface",    "ValueNames",        "NodeNames",
                             "GetNode TARVO",     "ValueNames",        "GetString comType",
                             "ValueNames",        "GetValueType data", "GetArrayByte data",
                             "GetValueType x",    "GetInteger x",      "NodeNames",
                             "GetNode TARVO",     "ValueNames",        "GetValueType comType",
                             "GetString comType", "NodeNames",         "GetNode other",
                             "ValueNames",        "GetValueType y",    "GetInteger y",
                             "NodeNames"}));
    for (std::size_t i = 0; i < bag.calls.size(); ++i) {
        Recording recording;
        recording.failAt = i;
        EXPECT_EQ(transition(marked(u"PropertyBag"), recording), "untouched") << i;
        EXPECT_EQ(recording.living, 0);
    }
}

// A node that holds itself.
class Endless final : public tarvo::StateSource {
    std::vector<std::u16string> valueNames() override { return {u"comType"}; }
    std::vector<std::u16string> nodeNames() override { return {u"TARVO"}; }
    const tarvo::StateValue* findValue(std::u16string_view) override {
        static const tarvo::StateValue kForm = u"PropertyBag";
        return &kForm;
    }
    Reference<IVaskPersistReader> openNode(std::u16string_view) override {
        return Reference<IVaskPersistReader>::share(pair());
    }
};

TEST(FromTransitionFormat, EndsAnEndlessTree) {
    const auto endless = Reference<tarvo::StateSource>::share(new Endless);
    EXPECT_EQ(transition(endless->pair()), "untouched");
}

TEST(FromTransitionFormat, TakesOnePairOfKinds) {
    Recording recording;
    const auto reader = RecordingReader::on(tarvo::offerState(marked(u"Stream")), recording);
    auto* const given = reinterpret_cast<IVaskInterface*>(reader.get());
    for (const auto& [source, target] : {std::pair{2u, 2u}, {1u, 1u}, {0u, 0u}}) {
        IVaskInterface* out = given;
        EXPECT_EQ(TARVO_CALL(tarvoDepersistFromTransitionFormat)(given, &out, source, target),
                  RC_OK);
        EXPECT_EQ(out, given);
        Component component;
        EXPECT_EQ(TARVO_CALL(tarvoDepersistPMCFromTransitionFormat)(component.pair(), given, source,
                                                                    target),
                  RC_INVALID_ARGUMENT);
        EXPECT_TRUE(component.log.empty());
    }
    IVaskInterface* out = given;
    EXPECT_EQ(TARVO_CALL(tarvoDepersistFromTransitionFormat)(nullptr, &out, 1, 2), RC_OK);
    EXPECT_EQ(out, given);
    EXPECT_TRUE(recording.calls.empty());
    Component component;
    EXPECT_EQ(TARVO_CALL(tarvoDepersistPMCFromTransitionFormat)(component.pair(), nullptr, 1, 2),
              RC_NO_INTERFACE);
}

TEST(PMCFromTransitionFormat, NeedsStateInTheForm) {
    const auto state = [](const std::map<std::u16string, tarvo::StateValue, std::less<>>& values) {
        auto tree = std::make_shared<StateTree>();
        tree->values = values;
        return tarvo::offerState(tree);
    };
    const Reference<IVaskPersistReader> wrong[] = {
        state({}),
        state({{u"TransitionFormat", u"File"}}),
        state({{u"TransitionFormat", 1}}),
        state({{u"TransitionFormat", u"Stream"}}),
        state({{u"TransitionFormat", u"Stream"}, {u"data", u"text"}}),
        state({{u"TransitionFormat", u"PropertyBag"}}),
    };
    for (const auto& reader : wrong) {
        Component component;
        EXPECT_EQ(depersist(component, reader.get()), RC_INVALID_ARGUMENT);
        EXPECT_TRUE(component.log.empty());
    }
    // What the first function makes of a bag has no node for the second.
    Reference<IVaskInterface> out;
    const auto bag = tarvo::offerState(marked(u"PropertyBag"));
    TARVO_CALL(tarvoDepersistFromTransitionFormat)
    (reinterpret_cast<IVaskInterface*>(bag.get()), out.out(), 1, 2);
    EXPECT_EQ(TARVO_CALL(tarvoDepersistPMCFromTransitionFormat)(nullptr, out.get(), 1, 2),
              RC_INVALID_ARGUMENT);
}

TEST(PMCFromTransitionFormat, AsksTheComponentLast) {
    const auto good = streamState(payloadOf(richTree()));
    const auto cut = streamState({'M', 'O', 'R', 'V', 'E', 'N', 0, 1, 0, 0, 0, 0});
    const auto run = [](IVaskInterface* pmc, const Reference<IVaskPersistReader>& state) {
        return TARVO_CALL(tarvoDepersistPMCFromTransitionFormat)(
            pmc, reinterpret_cast<IVaskInterface*>(state.get()), 1, 2);
    };
    EXPECT_EQ(run(nullptr, good), RC_NO_INTERFACE);
    EXPECT_EQ(run(nullptr, cut), RC_END_OF_DATA);
    Component without;
    without.hasPersist = false;
    EXPECT_EQ(run(without.pair(), good), RC_NO_INTERFACE);
    EXPECT_EQ(run(without.pair(), cut), RC_END_OF_DATA);
    EXPECT_EQ(without.log, std::vector<std::string>{"queryInterface"});

    for (const TarvoResult code : {0u, 1u, 77u}) {
        Component component([code](IVaskPersistReader*) { return code; });
        EXPECT_EQ(run(component.pair(), good), code);
        std::vector<std::string> log = {"queryInterface", "load"};
        if (code == RC_SEE_LAST_ERROR)
            log.emplace_back("getLastError");
        EXPECT_EQ(component.log, log);
        EXPECT_EQ(shown(component.loaded.get()), kRichText);
    }
}

} // namespace
