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
/* Four slots that follow one another. */
#define SLOTS_FROM(table, first, a, b, c, d)                                                       \
    SLOT(table, (first), a);                                                                       \
    SLOT(table, (first) + 1, b);                                                                   \
    SLOT(table, (first) + 2, c);                                                                   \
    SLOT(table, (first) + 3, d)
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

/* The slots of an interface, in its own table and in those that repeat it. */
#define EXTENDS_ITARVOBASE(table)                                                                  \
    SLOT(table, 0, addReference);                                                                  \
    SLOT(table, 1, release)
#define EXTENDS_IVASKINTERFACE(table)                                                              \
    EXTENDS_ITARVOBASE(table);                                                                     \
    SLOT(table, 2, queryInterface);                                                                \
    SLOT(table, 3, getLastError)
#define EXTENDS_IVASKSTRING(table)                                                                 \
    SLOT(table, 0, get);                                                                           \
    SLOT(table, 1, set)
#define EXTENDS_IVASKARRAY(table)                                                                  \
    SLOT(table, 0, get);                                                                           \
    SLOT(table, 1, resize)
#define EXTENDS_IVASKVALUE(table)                                                                  \
    SLOTS_FROM(table, 0, getValueType, getStringValue, getIntegerValue, getBooleanValue);          \
    SLOTS_FROM(table, 4, getRealValue, setStringValue, setIntegerValue, setBooleanValue);          \
    SLOT(table, 8, setRealValue);                                                                  \
    SLOT(table, 9, setEmpty)
#define EXTENDS_IVASKREGISTRYKEY(table)                                                            \
    EXTENDS_ITARVOBASE(table);                                                                     \
    SLOTS_FROM(table, 2, getValueNames, getValueType, getStringValue, getIntegerValue);            \
    SLOTS_FROM(table, 6, getUUIDValue, getKeyNames, getKey, isAllUsersValue)

PAIR(ITarvoBase);
SLOTS(ITarvoBaseTable, 2);
EXTENDS_ITARVOBASE(ITarvoBaseTable);

PAIR(IVaskInterface);
SLOTS(IVaskInterfaceTable, 4);
EXTENDS_IVASKINTERFACE(IVaskInterfaceTable);

PAIR(IVaskString);
SLOTS(IVaskStringTable, 2);
EXTENDS_IVASKSTRING(IVaskStringTable);

PAIR(IVaskArray);
SLOTS(IVaskArrayTable, 2);
EXTENDS_IVASKARRAY(IVaskArrayTable);

PAIR(IVaskError);
SLOTS(IVaskErrorTable, 6);
EXTENDS_ITARVOBASE(IVaskErrorTable);
SLOTS_FROM(IVaskErrorTable, 2, getErrorText, getCause, getSource, getScope);

PAIR(ITarvoIdentification);
SLOTS(ITarvoIdentificationTable, 8);
EXTENDS_IVASKINTERFACE(ITarvoIdentificationTable);
SLOTS_FROM(ITarvoIdentificationTable, 4, getComponentName, setComponentName,
           getComponentDescription, setComponentDescription);

PAIR(ITarvoCollection);
SLOTS(ITarvoCollectionTable, 7);
EXTENDS_IVASKINTERFACE(ITarvoCollectionTable);
SLOT(ITarvoCollectionTable, 4, getItem);
SLOT(ITarvoCollectionTable, 5, getItemByName);
SLOT(ITarvoCollectionTable, 6, getCount);

PAIR(IVaskValue);
SLOTS(IVaskValueTable, 10);
EXTENDS_IVASKVALUE(IVaskValueTable);

PAIR(VaskStringObject);
SLOTS(VaskStringObjectTable, 3);
EXTENDS_IVASKSTRING(VaskStringObjectTable);
SLOT(VaskStringObjectTable, 2, destroy);

PAIR(VaskValueObject);
SLOTS(VaskValueObjectTable, 11);
EXTENDS_IVASKVALUE(VaskValueObjectTable);
SLOT(VaskValueObjectTable, 10, destroy);

PAIR(VaskArrayObject);
SLOTS(VaskArrayObjectTable, 3);
EXTENDS_IVASKARRAY(VaskArrayObjectTable);
SLOT(VaskArrayObjectTable, 2, destroy);

PAIR(IVaskRegistryKey);
SLOTS(IVaskRegistryKeyTable, 10);
EXTENDS_IVASKREGISTRYKEY(IVaskRegistryKeyTable);

PAIR(IVaskRegistryKeyWriter);
SLOTS(IVaskRegistryKeyWriterTable, 17);
EXTENDS_IVASKREGISTRYKEY(IVaskRegistryKeyWriterTable);
SLOTS_FROM(IVaskRegistryKeyWriterTable, 10, createKey, deleteKey, deleteValue, setStringValue);
SLOT(IVaskRegistryKeyWriterTable, 14, setIntegerValue);
SLOT(IVaskRegistryKeyWriterTable, 15, setUUIDValue);
SLOT(IVaskRegistryKeyWriterTable, 16, setEmptyValue);

PAIR(IVaskRegistryWriter);
SLOTS(IVaskRegistryWriterTable, 15);
EXTENDS_ITARVOBASE(IVaskRegistryWriterTable);
SLOTS_FROM(IVaskRegistryWriterTable, 2, getKeyWriter, getKey, deleteKey, deleteValue);
SLOTS_FROM(IVaskRegistryWriterTable, 6, createPMCRegistrar, unregisterPMC, unregisterPMCLocation,
           revert);
SLOTS_FROM(IVaskRegistryWriterTable, 10, commit, registerLibrary, unregisterLibrary,
           setLibraryLocation);
SLOT(IVaskRegistryWriterTable, 14, removeLibraryLocation);

PAIR(IVaskPMCEnumerator);
SLOTS(IVaskPMCEnumeratorTable, 6);
EXTENDS_ITARVOBASE(IVaskPMCEnumeratorTable);
SLOTS_FROM(IVaskPMCEnumeratorTable, 2, getPMCByUUID, getPMCByProgId, getPMCsInCategories,
           getAllPMCs);

PAIR(IVaskPMCRegistrationDetails);
SLOTS(IVaskPMCRegistrationDetailsTable, 21);
EXTENDS_IVASKINTERFACE(IVaskPMCRegistrationDetailsTable);
SLOTS_FROM(IVaskPMCRegistrationDetailsTable, 4, getName, getDescription, getVaskVersion,
           getComponentVersion);
SLOTS_FROM(IVaskPMCRegistrationDetailsTable, 8, getVendorURL, getHelpURL, getAbout, getUUID);
SLOTS_FROM(IVaskPMCRegistrationDetailsTable, 12, getProgId, getCategories, isInCategory,
           getLocations);
SLOTS_FROM(IVaskPMCRegistrationDetailsTable, 16, getLocation, isLocationAllUsers, getFlags,
           createInstance);
SLOT(IVaskPMCRegistrationDetailsTable, 20, getVersionIndependentProgId);

PAIR(IVaskPMCRegistrar);
SLOTS(IVaskPMCRegistrarTable, 16);
EXTENDS_ITARVOBASE(IVaskPMCRegistrarTable);
SLOTS_FROM(IVaskPMCRegistrarTable, 2, setName, setDescription, setVaskVersion, setComponentVersion);
SLOTS_FROM(IVaskPMCRegistrarTable, 6, setVendorURL, setHelpURL, setAbout, setUUID);
SLOTS_FROM(IVaskPMCRegistrarTable, 10, setProgId, addCategory, setFlags, setLocation);
SLOT(IVaskPMCRegistrarTable, 14, commit);
SLOT(IVaskPMCRegistrarTable, 15, setVersionIndependentProgId);

PAIR(IVaskLibraryEnumerator);
SLOTS(IVaskLibraryEnumeratorTable, 6);
EXTENDS_ITARVOBASE(IVaskLibraryEnumeratorTable);
SLOTS_FROM(IVaskLibraryEnumeratorTable, 2, getLibraryByUUID, getLibraryByName, getAllLibraries,
           getLibraryOfInterface);

PAIR(IVaskLibraryDetails);
SLOTS(IVaskLibraryDetailsTable, 9);
EXTENDS_IVASKINTERFACE(IVaskLibraryDetailsTable);
SLOTS_FROM(IVaskLibraryDetailsTable, 4, getName, getUUID, getVersion, getDefinitionPath);
SLOT(IVaskLibraryDetailsTable, 8, getLocation);

PAIR(IVaskPersistReader);
SLOTS(IVaskPersistReaderTable, 21);
EXTENDS_IVASKINTERFACE(IVaskPersistReaderTable);
SLOTS_FROM(IVaskPersistReaderTable, 4, ValueNames, GetValueType, GetReal, GetInteger);
SLOTS_FROM(IVaskPersistReaderTable, 8, GetBoolean, GetString, GetEnumeration, GetValue);
SLOTS_FROM(IVaskPersistReaderTable, 12, GetArrayReal, GetArrayInteger, GetArrayBoolean,
           GetArrayString);
SLOTS_FROM(IVaskPersistReaderTable, 16, GetArrayEnumeration, GetArrayValue, GetArrayByte,
           NodeNames);
SLOT(IVaskPersistReaderTable, 20, GetNode);

PAIR(IVaskIdentification);
SLOTS(IVaskIdentificationTable, 8);
EXTENDS_IVASKINTERFACE(IVaskIdentificationTable);
SLOTS_FROM(IVaskIdentificationTable, 4, getComponentName, setComponentName, getComponentDescription,
           setComponentDescription);

PAIR(IVaskPersist);
SLOTS(IVaskPersistTable, 6);
EXTENDS_IVASKINTERFACE(IVaskPersistTable);
SLOT(IVaskPersistTable, 5, load);

PAIR(IVaskIDLParseResult);
SLOTS(IVaskIDLParseResultTable, 18);
EXTENDS_ITARVOBASE(IVaskIDLParseResultTable);
SLOT(IVaskIDLParseResultTable, 15, getLibraryCount);
SLOT(IVaskIDLParseResultTable, 16, getLibrary);
SLOT(IVaskIDLParseResultTable, 17, getErrorMessage);

PAIR(IVaskIDLLibrary);
SLOTS(IVaskIDLLibraryTable, 23);
EXTENDS_ITARVOBASE(IVaskIDLLibraryTable);
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
EXTENDS_ITARVOBASE(IVaskIDLItemTable);
SLOT(IVaskIDLItemTable, 5, getName);
SLOT(IVaskIDLItemTable, 6, getUUID);
SLOT(IVaskIDLItemTable, 11, getNumberOfTemplateArguments);

PAIR(IVaskIDLType);
SLOTS(IVaskIDLTypeTable, 7);
EXTENDS_ITARVOBASE(IVaskIDLTypeTable);

PAIR(IMarshalService);
SLOTS(IMarshalServiceTable, 8);
EXTENDS_IVASKINTERFACE(IMarshalServiceTable);
SLOT(IMarshalServiceTable, 4, createInstance);
SLOT(IMarshalServiceTable, 7, stopService);

SLOTS(VaskDataClassFactory, 9);
SLOTS_FROM(VaskDataClassFactory, 0, createString, createValue, createRealArray, createIntegerArray);
SLOTS_FROM(VaskDataClassFactory, 4, createByteArray, createBooleanArray, createEnumerationArray,
           createStringArray);
SLOT(VaskDataClassFactory, 8, createValueArray);

/* An identifier can stand anywhere in memory. */
struct ByteAndUUID {
    char byte;
    TarvoUUID uuid;
};
static_assert(sizeof(TarvoUUID) == 16 && offsetof(struct ByteAndUUID, uuid) == 1, "TarvoUUID");

#endif
