/* Where every slot of every table stands. Components are compiled against these places and never
 * again, so a slot that moves breaks them without a word from any compiler but here.
 */
#ifndef TARVO_TESTS_INCLUDE_LAYOUT_H
#define TARVO_TESTS_INCLUDE_LAYOUT_H

#include <tarvo/tarvo.h>

#include <assert.h>
#include <stddef.h>

#ifdef __cplusplus
#include <type_traits>
#endif

#define SLOT(table, number, name)                                                                  \
    static_assert(offsetof(table, name) == (number)*8, #table "::" #name)
#define SLOTS(table, count) static_assert(sizeof(table) == (count)*8, #table)
#define PLAIN_PAIR(name)                                                                           \
    static_assert(offsetof(name, me) == 0 && offsetof(name, table) == 8 && sizeof(name) == 16,     \
                  #name)

/* In C++ the types are known in the namespace as well. */
#ifdef __cplusplus
#define PAIR(name)                                                                                 \
    PLAIN_PAIR(name);                                                                              \
    static_assert(std::is_same_v<name, TARVO::name>);                                              \
    static_assert(std::is_same_v<name##Table, TARVO::name##Table>)
#else
#define PAIR(name) PLAIN_PAIR(name)
#endif

PAIR(ITarvoBase);
SLOTS(ITarvoBaseTable, 2);
SLOT(ITarvoBaseTable, 0, addReference);
SLOT(ITarvoBaseTable, 1, release);

PAIR(IVaskInterface);
SLOTS(IVaskInterfaceTable, 4);
SLOT(IVaskInterfaceTable, 0, addReference);
SLOT(IVaskInterfaceTable, 1, release);
SLOT(IVaskInterfaceTable, 2, queryInterface);
SLOT(IVaskInterfaceTable, 3, getLastError);

PAIR(IVaskString);
SLOTS(IVaskStringTable, 2);
SLOT(IVaskStringTable, 0, get);
SLOT(IVaskStringTable, 1, set);

PAIR(IVaskArray);
SLOTS(IVaskArrayTable, 2);
SLOT(IVaskArrayTable, 0, get);
SLOT(IVaskArrayTable, 1, resize);

PAIR(IVaskError);
SLOTS(IVaskErrorTable, 6);
SLOT(IVaskErrorTable, 0, addReference);
SLOT(IVaskErrorTable, 1, release);
SLOT(IVaskErrorTable, 2, getErrorText);
SLOT(IVaskErrorTable, 3, getCause);
SLOT(IVaskErrorTable, 4, getSource);
SLOT(IVaskErrorTable, 5, getScope);

PAIR(ITarvoIdentification);
SLOTS(ITarvoIdentificationTable, 8);
SLOT(ITarvoIdentificationTable, 0, addReference);
SLOT(ITarvoIdentificationTable, 1, release);
SLOT(ITarvoIdentificationTable, 2, queryInterface);
SLOT(ITarvoIdentificationTable, 3, getLastError);
SLOT(ITarvoIdentificationTable, 4, getComponentName);
SLOT(ITarvoIdentificationTable, 5, setComponentName);
SLOT(ITarvoIdentificationTable, 6, getComponentDescription);
SLOT(ITarvoIdentificationTable, 7, setComponentDescription);

PAIR(ITarvoCollection);
SLOTS(ITarvoCollectionTable, 7);
SLOT(ITarvoCollectionTable, 0, addReference);
SLOT(ITarvoCollectionTable, 1, release);
SLOT(ITarvoCollectionTable, 2, queryInterface);
SLOT(ITarvoCollectionTable, 3, getLastError);
SLOT(ITarvoCollectionTable, 4, getItem);
SLOT(ITarvoCollectionTable, 5, getItemByName);
SLOT(ITarvoCollectionTable, 6, getCount);

PAIR(IVaskValue);
SLOTS(IVaskValueTable, 10);
SLOT(IVaskValueTable, 0, getValueType);
SLOT(IVaskValueTable, 1, getStringValue);
SLOT(IVaskValueTable, 2, getIntegerValue);
SLOT(IVaskValueTable, 3, getBooleanValue);
SLOT(IVaskValueTable, 4, getRealValue);
SLOT(IVaskValueTable, 5, setStringValue);
SLOT(IVaskValueTable, 6, setIntegerValue);
SLOT(IVaskValueTable, 7, setBooleanValue);
SLOT(IVaskValueTable, 8, setRealValue);
SLOT(IVaskValueTable, 9, setEmpty);

PAIR(VaskStringObject);
SLOTS(VaskStringObjectTable, 3);
SLOT(VaskStringObjectTable, 0, get);
SLOT(VaskStringObjectTable, 1, set);
SLOT(VaskStringObjectTable, 2, destroy);

PAIR(VaskValueObject);
SLOTS(VaskValueObjectTable, 11);
SLOT(VaskValueObjectTable, 0, getValueType);
SLOT(VaskValueObjectTable, 1, getStringValue);
SLOT(VaskValueObjectTable, 2, getIntegerValue);
SLOT(VaskValueObjectTable, 3, getBooleanValue);
SLOT(VaskValueObjectTable, 4, getRealValue);
SLOT(VaskValueObjectTable, 5, setStringValue);
SLOT(VaskValueObjectTable, 6, setIntegerValue);
SLOT(VaskValueObjectTable, 7, setBooleanValue);
SLOT(VaskValueObjectTable, 8, setRealValue);
SLOT(VaskValueObjectTable, 9, setEmpty);
SLOT(VaskValueObjectTable, 10, destroy);

PAIR(VaskArrayObject);
SLOTS(VaskArrayObjectTable, 3);
SLOT(VaskArrayObjectTable, 0, get);
SLOT(VaskArrayObjectTable, 1, resize);
SLOT(VaskArrayObjectTable, 2, destroy);

PAIR(IVaskRegistryKey);
SLOTS(IVaskRegistryKeyTable, 10);
SLOT(IVaskRegistryKeyTable, 0, addReference);
SLOT(IVaskRegistryKeyTable, 1, release);
SLOT(IVaskRegistryKeyTable, 2, getValueNames);
SLOT(IVaskRegistryKeyTable, 3, getValueType);
SLOT(IVaskRegistryKeyTable, 4, getStringValue);
SLOT(IVaskRegistryKeyTable, 5, getIntegerValue);
SLOT(IVaskRegistryKeyTable, 6, getUUIDValue);
SLOT(IVaskRegistryKeyTable, 7, getKeyNames);
SLOT(IVaskRegistryKeyTable, 8, getKey);
SLOT(IVaskRegistryKeyTable, 9, isAllUsersValue);

PAIR(IVaskRegistryKeyWriter);
SLOTS(IVaskRegistryKeyWriterTable, 17);
SLOT(IVaskRegistryKeyWriterTable, 0, addReference);
SLOT(IVaskRegistryKeyWriterTable, 1, release);
SLOT(IVaskRegistryKeyWriterTable, 2, getValueNames);
SLOT(IVaskRegistryKeyWriterTable, 3, getValueType);
SLOT(IVaskRegistryKeyWriterTable, 4, getStringValue);
SLOT(IVaskRegistryKeyWriterTable, 5, getIntegerValue);
SLOT(IVaskRegistryKeyWriterTable, 6, getUUIDValue);
SLOT(IVaskRegistryKeyWriterTable, 7, getKeyNames);
SLOT(IVaskRegistryKeyWriterTable, 8, getKey);
SLOT(IVaskRegistryKeyWriterTable, 9, isAllUsersValue);
SLOT(IVaskRegistryKeyWriterTable, 10, createKey);
SLOT(IVaskRegistryKeyWriterTable, 11, deleteKey);
SLOT(IVaskRegistryKeyWriterTable, 12, deleteValue);
SLOT(IVaskRegistryKeyWriterTable, 13, setStringValue);
SLOT(IVaskRegistryKeyWriterTable, 14, setIntegerValue);
SLOT(IVaskRegistryKeyWriterTable, 15, setUUIDValue);
SLOT(IVaskRegistryKeyWriterTable, 16, setEmptyValue);

PAIR(IVaskRegistryWriter);
SLOTS(IVaskRegistryWriterTable, 15);
SLOT(IVaskRegistryWriterTable, 0, addReference);
SLOT(IVaskRegistryWriterTable, 1, release);
SLOT(IVaskRegistryWriterTable, 2, getKeyWriter);
SLOT(IVaskRegistryWriterTable, 3, getKey);
SLOT(IVaskRegistryWriterTable, 4, deleteKey);
SLOT(IVaskRegistryWriterTable, 5, deleteValue);
SLOT(IVaskRegistryWriterTable, 6, createPMCRegistrar);
SLOT(IVaskRegistryWriterTable, 7, unregisterPMC);
SLOT(IVaskRegistryWriterTable, 8, unregisterPMCLocation);
SLOT(IVaskRegistryWriterTable, 9, revert);
SLOT(IVaskRegistryWriterTable, 10, commit);
SLOT(IVaskRegistryWriterTable, 11, registerLibrary);
SLOT(IVaskRegistryWriterTable, 12, unregisterLibrary);
SLOT(IVaskRegistryWriterTable, 13, setLibraryLocation);
SLOT(IVaskRegistryWriterTable, 14, removeLibraryLocation);

PAIR(IVaskPMCEnumerator);
SLOTS(IVaskPMCEnumeratorTable, 6);
SLOT(IVaskPMCEnumeratorTable, 0, addReference);
SLOT(IVaskPMCEnumeratorTable, 1, release);
SLOT(IVaskPMCEnumeratorTable, 2, getPMCByUUID);
SLOT(IVaskPMCEnumeratorTable, 3, getPMCByProgId);
SLOT(IVaskPMCEnumeratorTable, 4, getPMCsInCategories);
SLOT(IVaskPMCEnumeratorTable, 5, getAllPMCs);

PAIR(IVaskPMCRegistrationDetails);
SLOTS(IVaskPMCRegistrationDetailsTable, 21);
SLOT(IVaskPMCRegistrationDetailsTable, 0, addReference);
SLOT(IVaskPMCRegistrationDetailsTable, 1, release);
SLOT(IVaskPMCRegistrationDetailsTable, 2, queryInterface);
SLOT(IVaskPMCRegistrationDetailsTable, 3, getLastError);
SLOT(IVaskPMCRegistrationDetailsTable, 4, getName);
SLOT(IVaskPMCRegistrationDetailsTable, 5, getDescription);
SLOT(IVaskPMCRegistrationDetailsTable, 6, getVaskVersion);
SLOT(IVaskPMCRegistrationDetailsTable, 7, getComponentVersion);
SLOT(IVaskPMCRegistrationDetailsTable, 8, getVendorURL);
SLOT(IVaskPMCRegistrationDetailsTable, 9, getHelpURL);
SLOT(IVaskPMCRegistrationDetailsTable, 10, getAbout);
SLOT(IVaskPMCRegistrationDetailsTable, 11, getUUID);
SLOT(IVaskPMCRegistrationDetailsTable, 12, getProgId);
SLOT(IVaskPMCRegistrationDetailsTable, 13, getCategories);
SLOT(IVaskPMCRegistrationDetailsTable, 14, isInCategory);
SLOT(IVaskPMCRegistrationDetailsTable, 15, getLocations);
SLOT(IVaskPMCRegistrationDetailsTable, 16, getLocation);
SLOT(IVaskPMCRegistrationDetailsTable, 17, isLocationAllUsers);
SLOT(IVaskPMCRegistrationDetailsTable, 18, getFlags);
SLOT(IVaskPMCRegistrationDetailsTable, 19, createInstance);
SLOT(IVaskPMCRegistrationDetailsTable, 20, getVersionIndependentProgId);

PAIR(IVaskPMCRegistrar);
SLOTS(IVaskPMCRegistrarTable, 16);
SLOT(IVaskPMCRegistrarTable, 0, addReference);
SLOT(IVaskPMCRegistrarTable, 1, release);
SLOT(IVaskPMCRegistrarTable, 2, setName);
SLOT(IVaskPMCRegistrarTable, 3, setDescription);
SLOT(IVaskPMCRegistrarTable, 4, setVaskVersion);
SLOT(IVaskPMCRegistrarTable, 5, setComponentVersion);
SLOT(IVaskPMCRegistrarTable, 6, setVendorURL);
SLOT(IVaskPMCRegistrarTable, 7, setHelpURL);
SLOT(IVaskPMCRegistrarTable, 8, setAbout);
SLOT(IVaskPMCRegistrarTable, 9, setUUID);
SLOT(IVaskPMCRegistrarTable, 10, setProgId);
SLOT(IVaskPMCRegistrarTable, 11, addCategory);
SLOT(IVaskPMCRegistrarTable, 12, setFlags);
SLOT(IVaskPMCRegistrarTable, 13, setLocation);
SLOT(IVaskPMCRegistrarTable, 14, commit);
SLOT(IVaskPMCRegistrarTable, 15, setVersionIndependentProgId);

PAIR(IVaskLibraryEnumerator);
SLOTS(IVaskLibraryEnumeratorTable, 6);
SLOT(IVaskLibraryEnumeratorTable, 0, addReference);
SLOT(IVaskLibraryEnumeratorTable, 1, release);
SLOT(IVaskLibraryEnumeratorTable, 2, getLibraryByUUID);
SLOT(IVaskLibraryEnumeratorTable, 3, getLibraryByName);
SLOT(IVaskLibraryEnumeratorTable, 4, getAllLibraries);
SLOT(IVaskLibraryEnumeratorTable, 5, getLibraryOfInterface);

PAIR(IVaskLibraryDetails);
SLOTS(IVaskLibraryDetailsTable, 9);
SLOT(IVaskLibraryDetailsTable, 0, addReference);
SLOT(IVaskLibraryDetailsTable, 1, release);
SLOT(IVaskLibraryDetailsTable, 2, queryInterface);
SLOT(IVaskLibraryDetailsTable, 3, getLastError);
SLOT(IVaskLibraryDetailsTable, 4, getName);
SLOT(IVaskLibraryDetailsTable, 5, getUUID);
SLOT(IVaskLibraryDetailsTable, 6, getVersion);
SLOT(IVaskLibraryDetailsTable, 7, getDefinitionPath);
SLOT(IVaskLibraryDetailsTable, 8, getLocation);

PAIR(IVaskPersistReader);
SLOTS(IVaskPersistReaderTable, 21);
SLOT(IVaskPersistReaderTable, 0, addReference);
SLOT(IVaskPersistReaderTable, 1, release);
SLOT(IVaskPersistReaderTable, 2, queryInterface);
SLOT(IVaskPersistReaderTable, 3, getLastError);
SLOT(IVaskPersistReaderTable, 4, ValueNames);
SLOT(IVaskPersistReaderTable, 5, GetValueType);
SLOT(IVaskPersistReaderTable, 6, GetReal);
SLOT(IVaskPersistReaderTable, 7, GetInteger);
SLOT(IVaskPersistReaderTable, 8, GetBoolean);
SLOT(IVaskPersistReaderTable, 9, GetString);
SLOT(IVaskPersistReaderTable, 10, GetEnumeration);
SLOT(IVaskPersistReaderTable, 11, GetValue);
SLOT(IVaskPersistReaderTable, 12, GetArrayReal);
SLOT(IVaskPersistReaderTable, 13, GetArrayInteger);
SLOT(IVaskPersistReaderTable, 14, GetArrayBoolean);
SLOT(IVaskPersistReaderTable, 15, GetArrayString);
SLOT(IVaskPersistReaderTable, 16, GetArrayEnumeration);
SLOT(IVaskPersistReaderTable, 17, GetArrayValue);
SLOT(IVaskPersistReaderTable, 18, GetArrayByte);
SLOT(IVaskPersistReaderTable, 19, NodeNames);
SLOT(IVaskPersistReaderTable, 20, GetNode);

PAIR(IVaskIdentification);
SLOTS(IVaskIdentificationTable, 8);
SLOT(IVaskIdentificationTable, 0, addReference);
SLOT(IVaskIdentificationTable, 1, release);
SLOT(IVaskIdentificationTable, 2, queryInterface);
SLOT(IVaskIdentificationTable, 3, getLastError);
SLOT(IVaskIdentificationTable, 4, getComponentName);
SLOT(IVaskIdentificationTable, 5, setComponentName);
SLOT(IVaskIdentificationTable, 6, getComponentDescription);
SLOT(IVaskIdentificationTable, 7, setComponentDescription);

PAIR(IVaskPersist);
SLOTS(IVaskPersistTable, 6);
SLOT(IVaskPersistTable, 0, addReference);
SLOT(IVaskPersistTable, 1, release);
SLOT(IVaskPersistTable, 2, queryInterface);
SLOT(IVaskPersistTable, 3, getLastError);
SLOT(IVaskPersistTable, 5, load);

PAIR(IVaskIDLParseResult);
SLOTS(IVaskIDLParseResultTable, 18);
SLOT(IVaskIDLParseResultTable, 0, addReference);
SLOT(IVaskIDLParseResultTable, 1, release);
SLOT(IVaskIDLParseResultTable, 15, getLibraryCount);
SLOT(IVaskIDLParseResultTable, 16, getLibrary);
SLOT(IVaskIDLParseResultTable, 17, getErrorMessage);

PAIR(IVaskIDLLibrary);
SLOTS(IVaskIDLLibraryTable, 23);
SLOT(IVaskIDLLibraryTable, 0, addReference);
SLOT(IVaskIDLLibraryTable, 1, release);
SLOT(IVaskIDLLibraryTable, 5, getAttribute);
SLOT(IVaskIDLLibraryTable, 7, getCategoryCount);
SLOT(IVaskIDLLibraryTable, 8, getCategory);
SLOT(IVaskIDLLibraryTable, 11, getEnumerationCount);
SLOT(IVaskIDLLibraryTable, 12, getEnumeration);
SLOT(IVaskIDLLibraryTable, 15, getInterfaceCount);
SLOT(IVaskIDLLibraryTable, 16, getInterface);
SLOT(IVaskIDLLibraryTable, 20, getName);
SLOT(IVaskIDLLibraryTable, 21, getUUID);
SLOT(IVaskIDLLibraryTable, 22, getSourcePath);

PAIR(IVaskIDLItem);
SLOTS(IVaskIDLItemTable, 16);
SLOT(IVaskIDLItemTable, 0, addReference);
SLOT(IVaskIDLItemTable, 1, release);
SLOT(IVaskIDLItemTable, 5, getName);
SLOT(IVaskIDLItemTable, 6, getUUID);
SLOT(IVaskIDLItemTable, 11, getNumberOfTemplateArguments);

PAIR(IVaskIDLType);
SLOTS(IVaskIDLTypeTable, 7);
SLOT(IVaskIDLTypeTable, 0, addReference);
SLOT(IVaskIDLTypeTable, 1, release);

PAIR(IMarshalService);
SLOTS(IMarshalServiceTable, 8);
SLOT(IMarshalServiceTable, 0, addReference);
SLOT(IMarshalServiceTable, 1, release);
SLOT(IMarshalServiceTable, 2, queryInterface);
SLOT(IMarshalServiceTable, 3, getLastError);
SLOT(IMarshalServiceTable, 4, createInstance);
SLOT(IMarshalServiceTable, 7, stopService);

SLOTS(VaskDataClassFactory, 9);
SLOT(VaskDataClassFactory, 0, createString);
SLOT(VaskDataClassFactory, 1, createValue);
SLOT(VaskDataClassFactory, 2, createRealArray);
SLOT(VaskDataClassFactory, 3, createIntegerArray);
SLOT(VaskDataClassFactory, 4, createByteArray);
SLOT(VaskDataClassFactory, 5, createBooleanArray);
SLOT(VaskDataClassFactory, 6, createEnumerationArray);
SLOT(VaskDataClassFactory, 7, createStringArray);
SLOT(VaskDataClassFactory, 8, createValueArray);

/* An identifier can stand anywhere in memory. */
struct ByteAndUUID {
    char byte;
    TarvoUUID uuid;
};
static_assert(sizeof(TarvoUUID) == 16 && offsetof(struct ByteAndUUID, uuid) == 1, "TarvoUUID");

#endif
