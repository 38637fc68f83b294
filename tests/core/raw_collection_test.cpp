// Collections, over items whose names are good, shared or can't be had.
#include "core/raw_collection.h"
#include "tarvo/text.hpp"

#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace TARVO;

// An item that counts the questions for its name.
class Item final : public VaskBaseImpl<Item> {
  public:
    explicit Item(std::u16string name, Result result = RC_OK)
        : identification_{me(), &kTable}, name_(std::move(name)), result_(result) {
        if (result != RC_NO_INTERFACE)
            enterInterface(kITarvoIdentificationId, &identification_);
    }

    Result getComponentName(IVaskString* name) {
        ++asked;
        return result_ == RC_OK ? tarvo::setText(name, name_) : result_;
    }

    int asked = 0;

  private:
    static constexpr ITarvoIdentificationTable kTable = [] {
        ITarvoIdentificationTable table{};
        table.addReference = slot<Item, &Item::addReference>;
        table.release = slot<Item, &Item::release>;
        table.getComponentName = slot<Item, &Item::getComponentName>;
        return table;
    }();

    ITarvoIdentification identification_;
    std::u16string name_;
    Result result_;
};

using Items = std::vector<Reference<Item>>;

Reference<TarvoRawCollection> collectionOf(const Items& items) {
    auto collection = makeObject<TarvoRawCollection>(u"Things");
    for (const auto& item : items)
        collection->append(Reference<IVaskInterface>::share(item->pair()));
    return collection;
}

TEST(RawCollection, FindsItemsByNameWithoutCase) {
    const Items items = {makeObject<Item>(u"abc"), makeObject<Item>(u"\u00C4B"),
                         makeObject<Item>(u"Twice"), makeObject<Item>(u"tWICE")};
    const auto collection = collectionOf(items);
    ITarvoCollection* const pair = collection->collection();
    const std::pair<const char16_t*, Item*> cases[] = {
        {u"ABC", items[0].get()}, {u"\u00C4b", items[1].get()},
        {u"\u00E4b", nullptr},    {u"twice", items[3].get()},
        {u"ab", nullptr},         {u"", nullptr},
        {nullptr, nullptr},
    };
    for (const auto& [name, expected] : cases) {
        Reference<IVaskInterface> found;
        tarvo::String text(name == nullptr ? u"" : name);
        EXPECT_EQ(pair->table->getItemByName(pair->me, name == nullptr ? nullptr : text.pair(),
                                             found.out()),
                  expected == nullptr ? RC_NOT_AVAILABLE : RC_OK);
        EXPECT_EQ(found.get(), expected == nullptr ? nullptr : expected->pair());
    }
    for (const auto& item : items)
        EXPECT_EQ(item->asked, 1);
    EXPECT_EQ(pair->table->getItemByName(pair->me, nullptr, nullptr), RC_NULL_POINTER);

    const auto nameless = collectionOf({makeObject<Item>(u"")});
    Reference<IVaskInterface> found;
    EXPECT_EQ(nameless->getItemByName(nullptr, found.out()), RC_OK);
}

TEST(RawCollection, FailsAsAWholeOnANameThatCantBeHad) {
    for (const Result result : {RC_NO_INTERFACE, RC_NOT_AVAILABLE, RC_SEE_LAST_ERROR}) {
        const Items items = {makeObject<Item>(u"good"), makeObject<Item>(u"bad", result)};
        const auto collection = collectionOf(items);
        ITarvoCollection* const pair = collection->collection();
        tarvo::String name(u"good");
        for (const int asked : {1, 2}) {
            IVaskInterface* item = items[0]->pair();
            EXPECT_EQ(pair->table->getItemByName(pair->me, name.pair(), &item), result);
            EXPECT_EQ(item, nullptr);
            EXPECT_EQ(items[0]->asked, asked); // nothing is kept of the first attempt
        }
    }
}

TEST(RawCollection, GivesItemsByPlace) {
    const Items items = {makeObject<Item>(u"a"), makeObject<Item>(u"a")};
    auto collection = collectionOf(items);
    ITarvoCollection* const pair = collection->collection();
    IVaskInterface* const untouched = items[0]->pair();
    for (const std::int32_t index : {-1, 2, INT32_MIN, INT32_MAX}) {
        IVaskInterface* item = untouched;
        EXPECT_EQ(pair->table->getItem(pair->me, index, &item), RC_NOT_AVAILABLE);
        EXPECT_EQ(item, untouched);
    }
    EXPECT_EQ(pair->table->getItem(pair->me, -1, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(pair->table->getCount(pair->me, nullptr), RC_NULL_POINTER);
    Reference<IVaskInterface> second;
    EXPECT_EQ(pair->table->getItem(pair->me, 1, second.out()), RC_OK);
    collection = nullptr;
    EXPECT_EQ(second.get(), items[1]->pair());

    const auto none = makeObject<TarvoRawCollection>(u"None");
    std::uint32_t count = 9;
    EXPECT_EQ(none->getCount(&count), RC_OK);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(none->getItemByName(nullptr, second.out()), RC_NOT_AVAILABLE);
}

TEST(RawCollection, HasANameOfItsOwn) {
    const auto collection = makeObject<TarvoRawCollection>(u"Things", u"all of them");
    ITarvoCollection* const pair = collection->collection();
    for (const UUID& asked : {kIVaskInterfaceId, kITarvoIdentificationId, kITarvoCollectionId}) {
        Reference<IVaskInterface> found;
        EXPECT_EQ(pair->table->queryInterface(pair->me, &asked, found.out()), RC_OK);
    }
    tarvo::String text;
    EXPECT_EQ(collection->getComponentName(text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"Things");
    EXPECT_EQ(collection->getComponentDescription(text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"all of them");
}

} // namespace
