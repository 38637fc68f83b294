// A reader over one node of a tree, which components read their state from.
#pragma once

#include "persistence/tree.h"
#include "tarvo/error.h"
#include "tarvo/persistence.h"
#include "tarvo/reference.hpp"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace TARVO {

class vask_link_error;

// It stands outside the object bases, since its last error is handed over when it is fetched.
class TarvoPersistReader {
  public:
    // `name` is that of the node, empty for a root.
    static tarvo::Reference<TarvoPersistReader> make(std::u16string_view name,
                                                     tarvo::Reference<TARVOPersistenceNode> node);

    TarvoPersistReader(const TarvoPersistReader&) = delete;
    TarvoPersistReader& operator=(const TarvoPersistReader&) = delete;

    IVaskInterface* pair() noexcept { return &pair_; }
    IVaskPersistReader* readerPair() noexcept { return &reader_; }

    void addReference() noexcept { references_.fetch_add(1); }
    void release() noexcept {
        if (references_.fetch_sub(1) == 1)
            delete this;
    }

    // How a slot that fails keeps the detail.
    void recordLastError(std::u16string_view scope, const vask_link_error& exception);

  private:
    TarvoPersistReader(std::u16string_view name, tarvo::Reference<TARVOPersistenceNode> node)
        : name_(name), node_(std::move(node)) {}
    ~TarvoPersistReader() = default;

    Result queryInterface(const UUID* interfaceId, IVaskInterface** interfaceReference) noexcept;
    Result getLastError(IVaskError** error) noexcept;

    Result valueNames(IVaskArray* names);
    Result getValueType(IVaskString* name, std::uint32_t* kind);
    template <std::size_t Kind, class Target>
    Result getValue(IVaskString* name, Target* target);
    Result nodeNames(IVaskArray* names);
    Result getNode(IVaskString* name, IVaskPersistReader** node);

    Result getComponentName(IVaskString* name);
    Result getComponentDescription(IVaskString* description);
    Result refuseText(IVaskString*) noexcept { return RC_READ_ONLY; }

    std::u16string description() const;

    static const IVaskInterfaceTable kTable;
    static const IVaskPersistReaderTable kReaderTable;
    static const IVaskIdentificationTable kIdentificationTable;

    IVaskInterface pair_{this, &kTable};
    std::atomic<std::uint32_t> references_ = 0;
    tarvo::Reference<IVaskError> lastError_;
    IVaskPersistReader reader_{this, &kReaderTable};
    IVaskIdentification identification_{this, &kIdentificationTable};
    std::u16string name_;
    tarvo::Reference<TARVOPersistenceNode> node_;
};

} // namespace TARVO
