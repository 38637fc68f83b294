// A component library in C++: one component with four interfaces.
#include "igreeter.h"

#include <tarvo/component.hpp>
#include <tarvo/identification.h>
#include <tarvo/instantiation.h>
#include <tarvo/state.hpp>
#include <tarvo/text.hpp>

#include <string>

namespace {

class Greeter : public tarvo::Component<Greeter> {
  public:
    void* find(const TarvoUUID& id) noexcept {
        if (tarvo::UUID(id) == tarvo::UUID(kIGreeterId))
            return &greeter_;
        if (tarvo::UUID(id) == tarvo::UUID(kITarvoIdentificationId))
            return &identification_;
        if (tarvo::UUID(id) == tarvo::UUID(kIVaskPersistId))
            return &persist_;
        return nullptr;
    }

    TarvoResult greet(const char16_t* name, IVaskString* greeting) {
        if (name == nullptr || greeting == nullptr)
            return RC_NULL_POINTER;
        return tarvo::setText(greeting, greeting_ + u", " + name + u"!");
    }

    TarvoResult getName(IVaskString* name) {
        return name == nullptr ? RC_NULL_POINTER : tarvo::setText(name, name_);
    }
    TarvoResult setName(IVaskString* name) {
        if (name == nullptr)
            return RC_NULL_POINTER;
        name_ = tarvo::viewOf(name);
        return RC_OK;
    }
    TarvoResult getDescription(IVaskString* description) {
        return description == nullptr
                   ? RC_NULL_POINTER
                   : tarvo::setText(description, u"Greets whoever is named to it");
    }
    TarvoResult setDescription(IVaskString*) { return RC_READ_ONLY; }

    // A failure of the reader is raised, and the slot makes its code of it. Nothing is taken over
    // before all of the state is read.
    TarvoResult load(IVaskPersistReader* reader) {
        if (reader == nullptr)
            return RC_NULL_POINTER;
        greeting_ = tarvo::StateReader::share(reader).string(u"greeting");
        return RC_OK;
    }

  private:
    static constexpr IGreeterTable kGreeterTable = {
        .addReference = tarvo::slot<Greeter, &Greeter::addReference>,
        .release = tarvo::slot<Greeter, &Greeter::release>,
        .queryInterface = tarvo::slot<Greeter, &Greeter::queryInterface>,
        .getLastError = tarvo::slot<Greeter, &Greeter::getLastError>,
        .greet = tarvo::slot<Greeter, &Greeter::greet>,
    };
    static constexpr ITarvoIdentificationTable kIdentificationTable = {
        .addReference = tarvo::slot<Greeter, &Greeter::addReference>,
        .release = tarvo::slot<Greeter, &Greeter::release>,
        .queryInterface = tarvo::slot<Greeter, &Greeter::queryInterface>,
        .getLastError = tarvo::slot<Greeter, &Greeter::getLastError>,
        .getComponentName = tarvo::slot<Greeter, &Greeter::getName>,
        .setComponentName = tarvo::slot<Greeter, &Greeter::setName>,
        .getComponentDescription = tarvo::slot<Greeter, &Greeter::getDescription>,
        .setComponentDescription = tarvo::slot<Greeter, &Greeter::setDescription>,
    };

    static constexpr IVaskPersistTable kPersistTable = {
        .addReference = tarvo::slot<Greeter, &Greeter::addReference>,
        .release = tarvo::slot<Greeter, &Greeter::release>,
        .queryInterface = tarvo::slot<Greeter, &Greeter::queryInterface>,
        .getLastError = tarvo::slot<Greeter, &Greeter::getLastError>,
        .reserved4 = [] {},
        .load = tarvo::slot<Greeter, &Greeter::load>,
    };

    IGreeter greeter_{this, &kGreeterTable};
    ITarvoIdentification identification_{this, &kIdentificationTable};
    IVaskPersist persist_{this, &kPersistTable};
    std::u16string name_ = u"Greeter";
    std::u16string greeting_ = u"Hello";
};

} // namespace

// The one function that the library exports. TARVO calls it with the identifier under which the
// component is registered.
TARVO_ENTRY_POINT TarvoResult vaskCreateObject(const TarvoUUID* uuid, IVaskInterface** instance) {
    return tarvo::createComponent<Greeter>(kGreeterComponentId, uuid, instance);
}
