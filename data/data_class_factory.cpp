// The strings, values and arrays that are made for callers who have none of their own: the holders
// of the C++ layer with one slot more, through which their owner ends them. An element of an array
// is the same as an object that stands alone.
#include "tarvo/array.hpp"
#include "tarvo/data.h"
#include "tarvo/text.hpp"
#include "tarvo/value.hpp"

#include <new>
#include <utility>

namespace TARVO {

namespace {

template <class T>
void destroy(void* me) {
    delete static_cast<T*>(static_cast<typename T::Base*>(me));
}

class StringObject final : public tarvo::detail::BasicString<VaskStringObject> {
  public:
    using Base = BasicString;

    StringObject() noexcept : BasicString(&kTable) {}

  private:
    static constexpr VaskStringObjectTable kTable = {
        .get = &Base::get, .set = &Base::set, .destroy = &TARVO::destroy<StringObject>};
};

class ValueObject final : public tarvo::detail::BasicValue<VaskValueObject> {
  public:
    using Base = BasicValue;

    ValueObject() noexcept : BasicValue(&kTable) {}

  private:
    static constexpr VaskValueObjectTable kTable = {
        .getValueType = &Base::getValueType,
        .getStringValue = &Base::getStringValue,
        .getIntegerValue = &Base::getIntegerValue,
        .getBooleanValue = &Base::getBooleanValue,
        .getRealValue = &Base::getRealValue,
        .setStringValue = &Base::setStringValue,
        .setIntegerValue = &Base::setIntegerValue,
        .setBooleanValue = &Base::setBooleanValue,
        .setRealValue = &Base::setRealValue,
        .setEmpty = &Base::setEmptyValue,
        .destroy = &TARVO::destroy<ValueObject>,
    };
};

template <class Element>
class ScalarArrayObject final : public tarvo::detail::BasicScalarArray<VaskArrayObject, Element> {
  public:
    using Base = tarvo::detail::BasicScalarArray<VaskArrayObject, Element>;

    ScalarArrayObject() noexcept : Base(&kTable) {}

  private:
    static constexpr VaskArrayObjectTable kTable = {
        .get = &Base::get, .resize = &Base::resize, .destroy = &TARVO::destroy<ScalarArrayObject>};
};

template <class Element>
class ObjectArrayObject final : public tarvo::detail::BasicObjectArray<VaskArrayObject, Element> {
  public:
    using Base = tarvo::detail::BasicObjectArray<VaskArrayObject, Element>;

    ObjectArrayObject() noexcept : Base(&kTable) {}

  private:
    static constexpr VaskArrayObjectTable kTable = {.get = &Base::getItems,
                                                    .resize = &Base::resizeItems,
                                                    .destroy = &TARVO::destroy<ObjectArrayObject>};
};

template <class T>
auto create() -> decltype(std::declval<T&>().pair()) {
    T* const object = new (std::nothrow) T;
    return object == nullptr ? nullptr : object->pair();
}

constexpr VaskDataClassFactory kFactory = {
    .createString = &create<StringObject>,
    .createValue = &create<ValueObject>,
    .createRealArray = &create<ScalarArrayObject<double>>,
    .createIntegerArray = &create<ScalarArrayObject<std::int32_t>>,
    .createByteArray = &create<ScalarArrayObject<std::uint8_t>>,
    .createBooleanArray = &create<ScalarArrayObject<std::uint32_t>>,
    .createEnumerationArray = &create<ScalarArrayObject<std::uint32_t>>,
    .createStringArray = &create<ObjectArrayObject<StringObject>>,
    .createValueArray = &create<ObjectArrayObject<ValueObject>>,
};

} // namespace

} // namespace TARVO

const VaskDataClassFactory* vaskGetDataClassFactory(void) {
    return &TARVO::kFactory;
}
