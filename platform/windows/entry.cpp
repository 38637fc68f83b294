#include "platform/entry.h"

#include <windows.h>

// Exported through the module definition file.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        TARVO::platform::libraryAttached();
    }
    return TRUE;
}
