#include "tool/scope_writer.h"

#include "tarvo/text.hpp"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"

#include <algorithm>
#include <utility>

namespace tool {

namespace {

std::string keyOf(const tarvo::UUID& component) {
    return "/components/pmcs/" + toUtf8(component.string());
}

} // namespace

bool isKept(std::string_view text) {
    return std::ranges::none_of(text, [](char byte) { return byte >= 0 && byte < 9; });
}

KeyChange KeyChange::subKey(const std::string& path) const {
    tarvo::Reference<IVaskRegistryKeyWriter> key;
    require(key_->table->createKey(key_->me, toUtf16(path).c_str(), key.out()),
            "cannot make the key " + path);
    return KeyChange(std::move(key));
}

void KeyChange::setString(const std::string& name, const std::string& text) const {
    if (!isKept(text))
        throw Failure("the text of the value " + name +
                      " holds a control character that the registry can't keep");
    require(key_->table->setStringValue(key_->me, toUtf16(name).c_str(), toUtf16(text).c_str()),
            "cannot set the value " + name);
}

void KeyChange::setInteger(const std::string& name, std::int32_t number) const {
    require(key_->table->setIntegerValue(key_->me, toUtf16(name).c_str(), number),
            "cannot set the value " + name);
}

void KeyChange::setUuid(const std::string& name, const TarvoUUID& uuid) const {
    require(key_->table->setUUIDValue(key_->me, toUtf16(name).c_str(), &uuid),
            "cannot set the value " + name);
}

void KeyChange::setEmpty(const std::string& name) const {
    require(key_->table->setEmptyValue(key_->me, toUtf16(name).c_str()),
            "cannot set the value " + name);
}

ScopeWriter::ScopeWriter(const Library& library, bool allUsers) : scopeName_(scopeName(allUsers)) {
    require(library.openWriter(allUsers, writer_.out()),
            "cannot change the " + scopeName_ + " scope");
}

KeyChange ScopeWriter::key(const std::string& path) const {
    tarvo::Reference<IVaskRegistryKeyWriter> key;
    require(writer_->table->getKeyWriter(writer_->me, toUtf16(path).c_str(), key.out()),
            "cannot open the key " + path);
    return KeyChange(std::move(key));
}

void ScopeWriter::deleteKey(const std::string& path) const {
    require(writer_->table->deleteKey(writer_->me, toUtf16(path).c_str()),
            "cannot delete the key " + path);
}

void ScopeWriter::deleteValue(const std::string& path, const std::string& name) const {
    require(writer_->table->deleteValue(writer_->me, toUtf16(path).c_str(), toUtf16(name).c_str()),
            "cannot delete the value " + name + " of " + path);
}

tarvo::Reference<IVaskPMCRegistrar> ScopeWriter::createRegistrar() const {
    tarvo::Reference<IVaskPMCRegistrar> registrar;
    require(writer_->table->createPMCRegistrar(writer_->me, registrar.out()),
            "cannot register a component");
    return registrar;
}

bool ScopeWriter::hasComponent(const tarvo::UUID& component) const {
    return hasKey(keyOf(component));
}

bool ScopeWriter::hasLocation(const tarvo::UUID& component, const std::string& location) const {
    return hasValue(keyOf(component), location);
}

void ScopeWriter::removeComponent(const tarvo::UUID& component) const {
    require(writer_->table->unregisterPMC(writer_->me, &component),
            "cannot remove the component " + toUtf8(component.string()));
}

void ScopeWriter::removeLocation(const tarvo::UUID& component, std::int32_t location) const {
    require(writer_->table->unregisterPMCLocation(writer_->me, &component, location),
            "cannot remove a location of " + toUtf8(component.string()));
}

tarvo::Reference<IVaskRegistryKey> ScopeWriter::find(const std::string& path) const {
    tarvo::Reference<IVaskRegistryKey> key;
    const TarvoResult result =
        writer_->table->getKey(writer_->me, toUtf16(path).c_str(), key.out());
    if (result != RC_NOT_FOUND)
        require(result, "cannot open the key " + path);
    return key;
}

bool ScopeWriter::hasValue(const std::string& path, const std::string& name) const {
    const auto key = find(path);
    std::uint32_t type = 0;
    return key && key->table->getValueType(key->me, toUtf16(name).c_str(), nullptr, &type) == RC_OK;
}

std::string ScopeWriter::text(const std::string& path, const std::string& name) const {
    tarvo::String text;
    if (const auto key = find(path))
        key->table->getStringValue(key->me, toUtf16(name).c_str(), nullptr, text.pair());
    return toUtf8(text.text());
}

void ScopeWriter::commit() const {
    Progress::say("Writing the " + scopeName_ + " scope");
    require(writer_->table->commit(writer_->me), "cannot write the " + scopeName_ + " scope");
}

} // namespace tool
