/* A library that a client may find in the place of the real one: of another version, or with a
 * function missing. All but two functions are there for their names alone.
 *   FAKE_VERSION  what it says of its version; a library without it has no function for that
 *   FAKE_LACKS    the number of a function that is missing */
#include <tarvo/base.h>

#include <stddef.h>

#ifndef FAKE_LACKS
#define FAKE_LACKS 0
#endif

#define NAMED(name)                                                                                \
    TARVO_ENTRY_POINT void name(void);                                                             \
    void name(void) {}

#ifdef FAKE_VERSION
TARVO_ENTRY_POINT TarvoResult getTarvoVersion(IVaskString* version);
TarvoResult getTarvoVersion(IVaskString* version) {
    static const char16_t kVersion[] = FAKE_VERSION;
    return version->table->set(version->me, kVersion, sizeof kVersion / sizeof *kVersion - 1);
}
#endif

TARVO_ENTRY_POINT const void* vaskGetDataClassFactory(void);
const void* vaskGetDataClassFactory(void) {
    static const int factory = 0;
    return &factory;
}

NAMED(vaskGenUUID)
NAMED(vaskUUIDFromString)
NAMED(vaskStringFromUUID)
NAMED(getTarvoLanguage)
NAMED(getTarvoDataFolder)
NAMED(getTarvoFolder)
NAMED(getTarvoUserDataFolder)
#if FAKE_LACKS != 1
NAMED(getErrorDescription)
#endif
NAMED(vaskGetRegistryKey)
NAMED(vaskGetRegistryWriter)
NAMED(vaskGetPMCEnumerator)
#if FAKE_LACKS != 2
NAMED(vaskGetLibraryEnumerator)
#endif
NAMED(tarvoCreatePMCInstance)
NAMED(tarvoDepersistFromTransitionFormat)
#if FAKE_LACKS != 2
NAMED(tarvoDepersistPMCFromTransitionFormat)
#endif
