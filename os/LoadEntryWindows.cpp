#include <windows.h>

// The adapter does nothing when it is loaded and nothing when a thread begins or ends. Windows keeps the
// thread notices for a library with thread-local storage of its own and says so; that is no failure.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
