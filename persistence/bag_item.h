// One item of the bag form, read as what its node says it is. The bag kept what COM made of a
// value, which may be another kind than the one declared, so that this is the one place where kinds
// are converted.
#pragma once

#include "persistence/tree.h"
#include "tarvo/persistence.h"

#include <cstdint>
#include <string>

namespace TARVO {

class BagItem {
  public:
    // The item of that name, which the bag keeps as a value of the stored kind. Both are borrowed.
    BagItem(IVaskPersistReader* bag, IVaskString* name, std::uint32_t storedKind)
        : bag_(bag), name_(name), stored_(storedKind) {}

    // Each reads the item as the one kind. Raises RC_BAD_DATA if the stored kind is none from which
    // that can be made, and what a slot of the bag gave.
    double real() const;
    std::int32_t integer() const;
    std::uint32_t boolean() const;
    std::u16string text() const;
    std::uint32_t enumeration() const;

    // The same for an array, which is new, of the declared kind; all array kinds but value[].
    void fillArray(std::uint32_t declared, IVaskArray* target) const;
    void fillEnumerations(tarvo::ScalarArray<std::uint32_t>& target) const;
    void fillValues(tarvo::ObjectArray<VaskValueImpl>& target) const;

    // Whether the node says with an empty value in a list's place that there is no list. Raises
    // RC_BAD_DATA for a value that isn't empty.
    bool isEmptyValue() const;

  private:
    VaskValueImpl value() const;

    IVaskPersistReader* bag_;
    IVaskString* name_;
    std::uint32_t stored_;
};

} // namespace TARVO
