// Where the time of a full scan goes: 5,000 native components, and 5,000 COM classes in both views.
// The same keys and values of the system registry that the scan needs are gone through without it,
// so that what is left is the scan's own work. For Wine:
//
//     cmake/wine --fresh build/windows build/windows/bench/bench_catalogue_scan.exe
#include "bench/machine.h"
#include "bench/require.h"
#include "platform/identifier.h"
#include "platform/system_registry.h"

#include <tarvo/catalogue.h>
#include <tarvo/reference.hpp>
#include <tarvo/result.h>
#include <tarvo/uuid.hpp>

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

using bench::require;
using TARVO::platform::RegistryRoot;
using TARVO::platform::RegistryView;
using TARVO::platform::SubkeyNames;
using TARVO::platform::SystemKey;

constexpr std::uint32_t kCount = 5000; // of native components, and of classes
constexpr std::array kViews = {RegistryView::view32, RegistryView::view64};
constexpr std::array kDescription = {u"Name",  u"Description", u"VaskVersion", u"ComponentVersion",
                                     u"About", u"VendorURL",   u"HelpURL"};

// A different one for each number, as spread as real ones are. Numbers from `kCount` on are those
// of classes, and `2 * kCount` is that of the category that makes them components.
tarvo::UUID uuidOf(std::uint32_t number) {
    TarvoUUID uuid{};
    std::uint64_t state = number + 1;
    for (std::uint8_t& byte : uuid.bytes) {
        state = state * 6364136223846793005 + 1442695040888963407;
        byte = static_cast<std::uint8_t>(state >> 56);
    }
    return uuid;
}
std::string textOf(const tarvo::UUID& uuid) {
    const auto text = uuid.string();
    return {text.begin(), text.end()};
}
std::u16string classText(std::uint32_t number) {
    return TARVO::platform::classText(
               std::bit_cast<TARVO::platform::IdentifierBytes>(uuidOf(number)))
        .data();
}

// ---- what there is to find ----

void writeNativeComponents() {
    std::ofstream file(bench::userRegistryFile(), std::ios::binary | std::ios::trunc);
    file << "<registry id=\"bench\">\n <key name=\"components\">\n  <key name=\"pmcs\">\n";
    for (std::uint32_t number = 0; number < kCount; ++number)
        file << "   <key name=\"" << textOf(uuidOf(number)) << "\">\n"
             << "    <value name=\"name\" type=\"string\">Component " << number << "</value>\n"
             << "    <value name=\"vaskversion\" type=\"string\">1.2</value>\n"
             << "    <value name=\"inproc64\" type=\"string\">C:\\component.dll</value>\n   "
                "</key>\n";
    file << "  </key>\n </key>\n <key name=\"types\">\n  <key name=\"categories\">\n   <key name=\""
         << textOf(uuidOf(2 * kCount))
         << "\">\n    <value name=\"name\" type=\"string\">C</value>\n"
         << "    <value name=\"library\" type=\"uuid\">{3b78cdeb-7fe8-4542-b58b-26205774d82a}"
         << "</value>\n   </key>\n  </key>\n </key>\n</registry>\n";
    require(file.flush().good());
}

SystemKey allClasses(RegistryView view) {
    return SystemKey::openForWriting(RegistryRoot::localMachine, u"Software\\Classes", view)
        .openForWriting(u"CLSID", view);
}

void writeClass(const SystemKey& classes, RegistryView view, std::uint32_t number) {
    const SystemKey key = classes.create(classText(number).c_str(), view);
    const SystemKey texts = key.create(u"VaskDescription", view);
    for (const char16_t* name : kDescription)
        require(texts.setText(name, u"about as long as these texts are"));
    require(key.create(u"ProgID", view).setText(nullptr, u"Vendor.Component.1"));
    require(key.create(u"VersionIndependentProgID", view).setText(nullptr, u"Vendor.Component"));
    require(key.create(u"InprocServer32", view).setText(u"ThreadingModel", u"Both"));
    const SystemKey implemented = key.create(u"Implemented Categories", view);
    require(static_cast<bool>(implemented.create(classText(2 * kCount).c_str(), view)));
    require(static_cast<bool>(implemented.create(classText(2 * kCount + 1).c_str(), view)));
}

// Gone with the object.
class Classes {
  public:
    Classes() {
        TARVO::platform::RegistryBatch batch;
        for (const RegistryView view : kViews)
            for (std::uint32_t number = kCount; number < 2 * kCount; ++number)
                writeClass(allClasses(view), view, number);
        require(batch.store());
    }
    Classes(const Classes&) = delete;
    Classes& operator=(const Classes&) = delete;
    ~Classes() {
        TARVO::platform::RegistryBatch batch;
        for (const RegistryView view : kViews)
            for (std::uint32_t number = kCount; number < 2 * kCount; ++number)
                allClasses(view).deleteTree(classText(number).c_str(), view);
    }
};

// ---- the same keys and values without the scan ----

void readText(const SystemKey& key, const char16_t* name) {
    std::array<std::byte, 256> buffer;
    require(key.findValue(name) && key.readValue(name, buffer));
}

void goThroughClass(const SystemKey& key, bool withValues) {
    const auto read = [withValues](const SystemKey& below, const char16_t* name) {
        if (withValues)
            readText(below, name);
    };
    const SystemKey texts = key.open(u"VaskDescription");
    for (const char16_t* name : kDescription)
        read(texts, name);
    read(key.open(u"ProgID"), nullptr);
    read(key.open(u"VersionIndependentProgID"), nullptr);
    read(key.open(u"InprocServer32"), u"ThreadingModel");
    const SystemKey implemented = key.open(u"Implemented Categories");
    for (SubkeyNames names(implemented); names.next() != nullptr;) {
    }
}

void goThroughSystemRegistry(bool withValues) {
    std::size_t number = 0;
    for (const RegistryView view : kViews) {
        const SystemKey classes = SystemKey::open(RegistryRoot::classesRoot, u"CLSID", view);
        SubkeyNames names(classes);
        while (const char16_t* name = names.next()) {
            const std::u16string path = std::u16string(name).append(u"\\Implemented Categories");
            const SystemKey implemented = classes.open(path.c_str(), view);
            if (!implemented)
                continue; // one of Wine's own
            SubkeyNames(implemented).next();
            if (number++ < kCount) // those of the second view are known already
                goThroughClass(classes.open(name, view), withValues);
        }
    }
    require(number >= 2 * kCount);
}

// ---- the scan ----

using Collection = tarvo::Reference<ITarvoCollection>;

Collection scan(IVaskPMCEnumerator& enumerator) {
    Collection pmcs;
    require(enumerator.table->getAllPMCs(enumerator.me, pmcs.out()) == RC_OK);
    return pmcs;
}

void check(const Collection& pmcs) {
    std::uint32_t count = 0;
    require(pmcs->table->getCount(pmcs->me, &count) == RC_OK && count == 2 * kCount);
}

template <class Work>
double millisecondsOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

int main() {
    writeNativeComponents();
    const Classes classes;
    tarvo::Reference<IVaskPMCEnumerator> enumerator;
    require(vaskGetPMCEnumerator(enumerator.out()) == RC_OK);

    constexpr int kRounds = 25;
    std::vector<double> keys;
    std::vector<double> keysAndValues;
    std::vector<double> whole;
    for (int round = 0; round < kRounds; ++round) {
        keys.push_back(millisecondsOf([] { goThroughSystemRegistry(false); }));
        keysAndValues.push_back(millisecondsOf([] { goThroughSystemRegistry(true); }));
        Collection pmcs;
        whole.push_back(millisecondsOf([&] { pmcs = scan(*enumerator); }));
        check(pmcs);
    }
    const double own = median(whole) - median(keysAndValues);
    std::printf("getAllPMCs, %u native components and %u classes in two views, medians of %d:\n"
                "  opening and enumerating keys  %8.2f ms\n"
                "  reading values                %8.2f ms\n"
                "  the scan's own work           %8.2f ms, %.2f of the time for keys\n",
                kCount, kCount, kRounds, median(keys), median(keysAndValues) - median(keys), own,
                own / median(keys));
    return 0;
}
