// A reader that stands before another and tells of the calls that it gets. Any of them can be made
// to fail.
#pragma once

#include <tarvo/tarvo.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tests {

struct Recording {
    std::vector<std::string> calls; // "GetReal name", in order
    std::size_t failAt = SIZE_MAX;  // the place of the call that fails, with this code:
    TarvoResult failure = 55;
    bool isLenient = false; // takes null arrays, and gives integers as reals
    int living = 0;         // readers
};

class RecordingReader {
  public:
    static tarvo::Reference<IVaskPersistReader> on(tarvo::Reference<IVaskPersistReader> inner,
                                                   Recording& recording) {
        auto* reader = new RecordingReader(std::move(inner), recording);
        return tarvo::Reference<IVaskPersistReader>::share(&reader->pair_);
    }

  private:
    using Table = IVaskPersistReaderTable;

    template <std::size_t Size>
    struct Name {
        constexpr Name(const char (&name)[Size]) { std::copy_n(name, Size, text); }
        char text[Size];
    };

    RecordingReader(tarvo::Reference<IVaskPersistReader> inner, Recording& recording)
        : inner_(std::move(inner)), recording_(recording) {
        ++recording_.living;
    }
    ~RecordingReader() { --recording_.living; }

    static RecordingReader& of(void* me) { return *static_cast<RecordingReader*>(me); }

    // Notes the call; true if it is to fail.
    bool fails(std::string call) {
        recording_.calls.push_back(std::move(call));
        return recording_.calls.size() - 1 == recording_.failAt;
    }

    static std::string textOf(IVaskString* name) {
        std::string text;
        for (const char16_t unit : tarvo::viewOf(name))
            text.push_back(static_cast<char>(unit));
        return text;
    }

    template <auto Slot, Name SlotName, class Target>
    static TarvoResult get(void* me, IVaskString* name, Target* target) {
        RecordingReader& self = of(me);
        if (self.fails(std::string(SlotName.text) + " " + textOf(name) +
                       (target == nullptr ? " null" : "")))
            return self.recording_.failure;
        if (self.recording_.isLenient) {
            if (target == nullptr)
                return RC_OK;
            if constexpr (std::is_same_v<Target, double>) {
                std::int32_t integer = 0;
                if (self.inner_->table->GetInteger(self.inner_->me, name, &integer) == RC_OK) {
                    *target = integer;
                    return RC_OK;
                }
            }
        }
        return (self.inner_->table->*Slot)(self.inner_->me, name, target);
    }

    template <auto Slot, Name SlotName>
    static TarvoResult getNames(void* me, IVaskArray* names) {
        RecordingReader& self = of(me);
        if (self.fails(SlotName.text))
            return self.recording_.failure;
        return (self.inner_->table->*Slot)(self.inner_->me, names);
    }

    // What a failing call leaves in an out-address is no reference.
    template <class Pair>
    static TarvoResult failWith(TarvoResult failure, Pair** out) {
        *out = reinterpret_cast<Pair*>(out);
        return failure;
    }

    static TarvoResult getNode(void* me, IVaskString* name, IVaskPersistReader** node) {
        RecordingReader& self = of(me);
        if (self.fails("GetNode " + textOf(name)))
            return failWith(self.recording_.failure, node);
        tarvo::Reference<IVaskPersistReader> child;
        const TarvoResult result = self.inner_->table->GetNode(self.inner_->me, name, child.out());
        if (result == RC_OK)
            *node = on(std::move(child), self.recording_).detach();
        return result;
    }

    static TarvoResult query(void* me, const TarvoUUID* id, IVaskInterface** out) {
        *out = nullptr;
        if (of(me).fails("queryInterface"))
            return failWith(of(me).recording_.failure, out);
        if (tarvo::UUID(*id) != tarvo::UUID(kIVaskPersistReaderId))
            return RC_NO_INTERFACE;
        ++of(me).references_;
        *out = reinterpret_cast<IVaskInterface*>(&of(me).pair_);
        return RC_OK;
    }

    static const Table kTable;

    IVaskPersistReader pair_{this, &kTable};
    tarvo::Reference<IVaskPersistReader> inner_;
    Recording& recording_;
    int references_ = 0;
};

inline constinit const IVaskPersistReaderTable RecordingReader::kTable = {
    .addReference = [](void* me) { ++of(me).references_; },
    .release =
        [](void* me) {
            if (--of(me).references_ == 0)
                delete &of(me);
        },
    .queryInterface = &RecordingReader::query,
    .getLastError = [](void* me, IVaskError**) -> TarvoResult {
        of(me).recording_.calls.emplace_back("getLastError");
        return RC_NOT_AVAILABLE;
    },
    .ValueNames = &getNames<&Table::ValueNames, "ValueNames">,
    .GetValueType = &get<&Table::GetValueType, "GetValueType">,
    .GetReal = &get<&Table::GetReal, "GetReal">,
    .GetInteger = &get<&Table::GetInteger, "GetInteger">,
    .GetBoolean = &get<&Table::GetBoolean, "GetBoolean">,
    .GetString = &get<&Table::GetString, "GetString">,
    .GetEnumeration = &get<&Table::GetEnumeration, "GetEnumeration">,
    .GetValue = &get<&Table::GetValue, "GetValue">,
    .GetArrayReal = &get<&Table::GetArrayReal, "GetArrayReal">,
    .GetArrayInteger = &get<&Table::GetArrayInteger, "GetArrayInteger">,
    .GetArrayBoolean = &get<&Table::GetArrayBoolean, "GetArrayBoolean">,
    .GetArrayString = &get<&Table::GetArrayString, "GetArrayString">,
    .GetArrayEnumeration = &get<&Table::GetArrayEnumeration, "GetArrayEnumeration">,
    .GetArrayValue = &get<&Table::GetArrayValue, "GetArrayValue">,
    .GetArrayByte = &get<&Table::GetArrayByte, "GetArrayByte">,
    .NodeNames = &getNames<&Table::NodeNames, "NodeNames">,
    .GetNode = &RecordingReader::getNode,
};

} // namespace tests
