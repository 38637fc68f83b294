// The core's machinery that later parts build on: exceptions and their messages, the catching rule,
// the object bases.
#include "core/error_object.h"
#include "core/link_error.h"
#include "core/object.h"
#include "core/uuid.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace TARVO;

// ---- errors ----

// An error of a plug-in's, which can refuse each of its texts.
class StubbornError {
  public:
    IVaskError pair{this, &kTable};
    int references = 1;
    Result textResult = RC_OK;
    Result scopeResult = RC_OK;
    Result sourceResult = RC_OK;
    Result causeResult = RC_OK;
    IVaskError* cause = nullptr;

  private:
    static StubbornError& self(void* me) { return *static_cast<StubbornError*>(me); }
    static constexpr IVaskErrorTable kTable = {
        .addReference = [](void* me) { ++self(me).references; },
        .release = [](void* me) { --self(me).references; },
        .getErrorText =
            [](void* me, IVaskString* text) {
                if (self(me).textResult == RC_OK)
                    tarvo::setText(text, u"text");
                return self(me).textResult;
            },
        .getCause =
            [](void* me, IVaskError** cause) {
                *cause = self(me).cause;
                if (*cause != nullptr)
                    (*cause)->table->addReference((*cause)->me);
                return self(me).causeResult;
            },
        .getSource =
            [](void* me, IVaskString* text) {
                if (self(me).sourceResult == RC_OK)
                    tarvo::setText(text, u"source");
                return self(me).sourceResult;
            },
        .getScope =
            [](void* me, IVaskString* text) {
                if (self(me).scopeResult == RC_OK)
                    tarvo::setText(text, u"scope");
                return self(me).scopeResult;
            },
    };
};

// An object whose last error is the one given.
class FailingObject {
  public:
    explicit FailingObject(IVaskError* lastError) : error(lastError) {}

    IVaskInterface pair{this, &kTable};
    IVaskError* error;
    int asked = 0;

  private:
    static constexpr IVaskInterfaceTable kTable = {
        .addReference = nullptr,
        .release = nullptr,
        .queryInterface = nullptr,
        .getLastError = [](void* me, IVaskError** out) -> TarvoResult {
            auto* self = static_cast<FailingObject*>(me);
            ++self->asked;
            *out = self->error;
            self->error->table->addReference(self->error->me);
            return RC_OK;
        },
    };
};

TEST(LinkError, TellsTheWholeChain) {
    const auto inner = makeError(u"no disk", u"file", u"Write", nullptr);
    const auto outer = makeError(u"VASK-LINK error", u"node %SCOPE%", u"a %SOURCE%", inner.get());
    FailingObject object(outer.get());
    const vask_link_error error(RC_SEE_LAST_ERROR, &object.pair);
    EXPECT_EQ(error.description(), u"VASK-LINK error");
    // The whole message is searched for each marker, so one inside a text is replaced as well.
    EXPECT_EQ(error.message(), u"in a node Write of file: VASK-LINK error, caused by: "
                               u"in %SCOPE% of %SOURCE%: no disk");
    EXPECT_EQ(&error.message(), &error.message());
    EXPECT_EQ(std::string(error.what()).size(), error.message().size());
}

TEST(LinkError, PutsPhrasesInThePlaceOfTextsThatAnErrorCantGive) {
    StubbornError cause;
    StubbornError stubborn;
    stubborn.cause = &cause.pair;
    stubborn.textResult = stubborn.scopeResult = stubborn.sourceResult = RC_SEE_LAST_ERROR;
    FailingObject object(&stubborn.pair);
    {
        const vask_link_error error(RC_SEE_LAST_ERROR, &object.pair);
        const vask_link_error copy(error);
        EXPECT_EQ(copy.message(),
                  u"in <unknown scope> of <unknown source>: Failed to obtain error text; "
                  u"RC_SEE_LAST_ERROR (1), caused by: in scope of source: text");
        EXPECT_EQ(copy.description(), u"Failed to obtain error text; RC_SEE_LAST_ERROR (1)");
        stubborn.causeResult = RC_UNSPECIFIED; // a chain that can't be followed ends
        EXPECT_EQ(error.message(), u"in <unknown scope> of <unknown source>: Failed to obtain "
                                   u"error text; RC_SEE_LAST_ERROR (1)");
    }
    EXPECT_EQ(stubborn.references, 1);
    EXPECT_EQ(cause.references, 1);
}

TEST(LinkError, TakesItsTextFromWhatItWasMadeOf) {
    StubbornError error;
    FailingObject object(&error.pair);
    EXPECT_FALSE(vask_link_error(5, &object.pair).error());
    EXPECT_EQ(object.asked, 0);
    EXPECT_EQ(vask_link_error(RC_NOT_FOUND).message(), u"RC_NOT_FOUND (500)");
    EXPECT_EQ(vask_link_error(RC_SEE_LAST_ERROR).message(), u"RC_SEE_LAST_ERROR (1)");
    EXPECT_EQ(vask_link_error(u"own text").code(), RC_SEE_LAST_ERROR);
    EXPECT_EQ(vask_link_error(u"own text").message(), u"own text");
    const vask_link_error converted(std::runtime_error("gr\xC3\xBC\xC3\x9F"));
    EXPECT_EQ(converted.message(), u"gr\u00FC\u00DF");
    EXPECT_STREQ(converted.what(), "gr\xC3\xBC\xC3\x9F");
}

// ---- the catching rule ----

struct Thrower {
    tarvo::Reference<IVaskError> lastError;
    int what = 0;

    void recordLastError(std::u16string_view scope, const vask_link_error& error) {
        recordError(lastError, u"thrower", scope, error);
    }
    Result act(int argument) {
        switch (argument) {
        case 1:
            throw vask_link_error(RC_BAD_DATA);
        case 2:
            throw vask_link_error(u"no such thing");
        case 3:
            throw std::out_of_range("beyond");
        case 4:
            throw 4;
        default:
            return static_cast<Result>(argument);
        }
    }
};

struct SilentThrower {
    Result act(int argument) { return Thrower().act(argument); }
};

TEST(CatchingRule, TurnsWhatIsThrownIntoCodesAndLastErrors) {
    constexpr auto* act = slot<Thrower, &Thrower::act, u"IThrower::act">;
    constexpr auto* actSilently = slot<SilentThrower, &SilentThrower::act>;
    const struct {
        int argument;
        Result result;
        Result silently;
        const char16_t* text; // of the last error; null if none is recorded
    } cases[] = {
        {77, 77, 77, nullptr},
        {1, RC_BAD_DATA, RC_BAD_DATA, nullptr},
        {2, RC_SEE_LAST_ERROR, RC_SEE_LAST_ERROR, u"no such thing"},
        {3, RC_SEE_LAST_ERROR, RC_UNSPECIFIED, u"beyond"},
        {4, RC_UNSPECIFIED, RC_UNSPECIFIED, nullptr},
    };
    for (const auto& [argument, result, silently, text] : cases) {
        Thrower thrower;
        SilentThrower silent;
        EXPECT_EQ(act(&thrower, argument), result);
        EXPECT_EQ(actSilently(&silent, argument), silently);
        ASSERT_EQ(static_cast<bool>(thrower.lastError), text != nullptr) << argument;
        if (text == nullptr)
            continue;
        tarvo::String given;
        IVaskError& error = *thrower.lastError;
        EXPECT_EQ(error.table->getErrorText(error.me, given.pair()), RC_OK);
        EXPECT_EQ(given.text(), text);
        EXPECT_EQ(error.table->getScope(error.me, given.pair()), RC_OK);
        EXPECT_EQ(given.text(), u"IThrower::act");
        EXPECT_EQ(error.table->getSource(error.me, given.pair()), RC_OK);
        EXPECT_EQ(given.text(), u"thrower");
        EXPECT_EQ(error.table->getErrorText(error.me, nullptr), RC_NULL_POINTER);
        EXPECT_EQ(error.table->getCause(error.me, nullptr), RC_NULL_POINTER);
    }
}

TEST(CatchingRule, LinksTheErrorThatWasCaught) {
    StubbornError cause;
    FailingObject object(&cause.pair);
    {
        tarvo::Reference<IVaskError> lastError;
        recordError(lastError, u"source", u"scope",
                    vask_link_error(RC_SEE_LAST_ERROR, &object.pair));
        tarvo::String text;
        lastError->table->getErrorText(lastError->me, text.pair());
        EXPECT_EQ(text.text(), u"VASK-LINK error");
        tarvo::Reference<IVaskError> linked;
        EXPECT_EQ(lastError->table->getCause(lastError->me, linked.out()), RC_OK);
        EXPECT_EQ(linked.get(), &cause.pair);
    }
    EXPECT_EQ(cause.references, 1);
}

// ---- objects ----

class Named final : public ReadOnlyNamedVaskBaseImpl<Named> {
  public:
    explicit Named(int* destroyed) : ReadOnlyNamedVaskBaseImpl(u"name"), destroyed_(destroyed) {}
    ~Named() override { ++*destroyed_; }

  private:
    int* destroyed_;
};

TEST(Object, IsFoundByItsInterfacesAndCountsThemTogether) {
    int destroyed = 0;
    auto object = makeObject<Named>(&destroyed);
    IVaskInterface* root = object->pair();

    IVaskInterface* out = root;
    EXPECT_EQ(root->table->queryInterface(root->me, &kIVaskInterfaceId, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(root->table->queryInterface(root->me, nullptr, &out), RC_NULL_POINTER);
    EXPECT_EQ(out, nullptr);
    out = root;
    EXPECT_EQ(root->table->queryInterface(root->me, &kITarvoCollectionId, &out), RC_NO_INTERFACE);
    EXPECT_EQ(out, nullptr);

    ASSERT_EQ(root->table->queryInterface(root->me, &kITarvoIdentificationId, &out), RC_OK);
    auto* identification = reinterpret_cast<ITarvoIdentification*>(out);
    EXPECT_EQ(identification->me, root->me);
    object = nullptr;
    EXPECT_EQ(destroyed, 0);

    tarvo::String text(u"before");
    EXPECT_EQ(identification->table->getComponentName(identification->me, nullptr),
              RC_NULL_POINTER);
    EXPECT_EQ(identification->table->getComponentName(identification->me, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"name");
    tarvo::ConstantString constant(u"fixed");
    EXPECT_EQ(identification->table->getComponentName(identification->me, constant.pair()),
              RC_READ_ONLY);
    EXPECT_EQ(identification->table->setComponentName(identification->me, nullptr), RC_READ_ONLY);
    EXPECT_EQ(identification->table->getComponentDescription(identification->me, text.pair()),
              RC_OK);
    EXPECT_EQ(text.text(), u"");

    auto* untouched = reinterpret_cast<IVaskError*>(&text);
    IVaskError* error = untouched;
    EXPECT_EQ(identification->table->getLastError(identification->me, &error), RC_NOT_AVAILABLE);
    EXPECT_EQ(error, untouched);
    EXPECT_EQ(identification->table->getLastError(identification->me, nullptr), RC_NULL_POINTER);
    identification->table->release(identification->me);
    EXPECT_EQ(destroyed, 1);
}

TEST(Object, CountsFromManyThreads) {
    int destroyed = 0;
    auto object = makeObject<Named>(&destroyed);
    IVaskInterface* root = object->pair();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([root] {
            for (int n = 0; n < 10000; ++n) {
                root->table->addReference(root->me);
                root->table->release(root->me);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(destroyed, 0);
    object = nullptr;
    EXPECT_EQ(destroyed, 1);
}

// ---- identifiers ----

TEST(UUID, PassesTheStrictTestOnlyAsItIsPrinted) {
    const std::u16string good = u"{00010203-0405-0607-0809-0a0b0c0d0e0f}";
    EXPECT_TRUE(isUUIDText(good));
    for (std::size_t i = 0; i < good.size(); ++i)
        for (const char16_t unit : std::u16string_view(u"A gG{-}\u0130")) {
            std::u16string bad = good;
            if (bad[i] == unit)
                continue;
            bad[i] = unit;
            EXPECT_FALSE(isUUIDText(bad)) << i;
        }
    EXPECT_FALSE(isUUIDText(good.substr(0, 37)));
    EXPECT_FALSE(isUUIDText(good + u" "));
    EXPECT_FALSE(isUUIDText(u""));
}

} // namespace
