// What details of either kind owe to a caller, and what becomes of a caller's own faults.
#pragma once

#include "tests/support/components.h"

namespace tests {

// An array of a caller's whose every call can fail.
struct FaultyArray {
    explicit FaultyArray(TarvoResult resized) : result(resized) {}

    static void get(void*, void**, std::uint32_t*) {}
    static TarvoResult resize(void* me, std::uint32_t count, void** elements) {
        auto* self = static_cast<FaultyArray*>(me);
        self->items.assign(count, self->constant.pair());
        *elements = self->items.data();
        return self->result;
    }
    static constexpr IVaskArrayTable kTable = {.get = get, .resize = resize};

    TarvoResult result;
    tarvo::ConstantString constant{u""};
    std::vector<IVaskString*> items;
    IVaskArray pair{this, &kTable};
};

// The results when a caller's string refuses what it is given.
struct Refusals {
    TarvoResult text;         // name
    TarvoResult optionalText; // about
    TarvoResult item;         // category, in an array
};

inline void expectCallersFaults(IVaskPMCRegistrationDetails& details, const Refusals& refusals) {
    const auto& table = *details.table;
    void* const me = details.me;
    std::uint32_t number = 9;
    const tarvo::UUID uuid = id(0);
    for (const auto slot : {table.getName, table.getDescription, table.getVaskVersion,
                            table.getComponentVersion, table.getVendorURL, table.getHelpURL,
                            table.getAbout, table.getProgId, table.getVersionIndependentProgId})
        EXPECT_EQ(slot(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getUUID(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getCategories(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.isInCategory(me, nullptr, &number), RC_NULL_POINTER);
    EXPECT_EQ(table.isInCategory(me, &uuid, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getLocations(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getLocation(me, 6, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.isLocationAllUsers(me, 0, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getFlags(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.createInstance(me, 0, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(number, 9u);

    tarvo::ConstantString constant(u"");
    EXPECT_EQ(table.getName(me, constant.pair()), refusals.text);
    EXPECT_EQ(table.getAbout(me, constant.pair()), refusals.optionalText);
    FaultyArray readOnlyItems(RC_OK);
    EXPECT_EQ(table.getCategories(me, &readOnlyItems.pair), refusals.item);
    EXPECT_EQ(readOnlyItems.items.size(), 2u);
    FaultyArray full(RC_OUT_OF_MEMORY);
    EXPECT_EQ(table.getCategories(me, &full.pair), RC_OUT_OF_MEMORY);
    EXPECT_EQ(table.getLocations(me, &full.pair), RC_OK);
}

inline void expectThreeInterfaces(IVaskPMCRegistrationDetails& details) {
    for (const TarvoUUID& asked :
         {kIVaskInterfaceId, kITarvoIdentificationId, kIVaskPMCRegistrationDetailsId}) {
        tarvo::Reference<IVaskInterface> found;
        EXPECT_EQ(details.table->queryInterface(details.me, &asked, found.out()), RC_OK);
        EXPECT_EQ(found->me, details.me);
    }
    tarvo::Reference<ITarvoIdentification> identification;
    EXPECT_EQ(
        details.table->queryInterface(details.me, &kITarvoIdentificationId,
                                      reinterpret_cast<IVaskInterface**>(identification.out())),
        RC_OK);
    const auto& table = *identification->table;
    tarvo::String text(u"-");
    EXPECT_EQ(table.getComponentName(identification->me, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), idText(1));
    EXPECT_EQ(table.getComponentDescription(identification->me, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"");
    EXPECT_EQ(table.setComponentName(identification->me, nullptr), RC_READ_ONLY);
    IVaskError* error = nullptr;
    EXPECT_EQ(details.table->getLastError(details.me, &error), RC_NOT_AVAILABLE);
}

} // namespace tests
