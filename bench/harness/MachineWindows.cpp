#include <windows.h>

#include <cstdlib>

#include "bench/harness/Machine.h"

namespace orvo::bench {

namespace {

void* countedMalloc(size_t size)
{
    countAllocation();
    return std::malloc(size);
}

void* countedCalloc(size_t number, size_t size)
{
    countAllocation();
    return std::calloc(number, size);
}

void* countedRealloc(void* block, size_t size)
{
    countAllocation();
    return std::realloc(block, size);
}

void* WINAPI countedHeapAlloc(HANDLE heap, DWORD flags, SIZE_T size)
{
    countAllocation();
    return HeapAlloc(heap, flags, size);
}

struct Replacement {
    const char* library;
    const char* name;
    void* counted;
};

const Replacement kReplacements[] = {
    {"msvcrt.dll", "malloc", reinterpret_cast<void*>(countedMalloc)},
    {"msvcrt.dll", "calloc", reinterpret_cast<void*>(countedCalloc)},
    {"msvcrt.dll", "realloc", reinterpret_cast<void*>(countedRealloc)},
    {"kernel32.dll", "HeapAlloc", reinterpret_cast<void*>(countedHeapAlloc)},
};

uint64_t asNumber(const void* address)
{
    return reinterpret_cast<uint64_t>(address);
}

void replace(IMAGE_THUNK_DATA& import)
{
    for (const Replacement& replacement : kReplacements) {
        const auto original = GetProcAddress(GetModuleHandleA(replacement.library), replacement.name);
        if (import.u1.Function != asNumber(reinterpret_cast<const void*>(original)))
            continue;
        DWORD protection = 0;
        VirtualProtect(&import, sizeof import, PAGE_READWRITE, &protection);
        import.u1.Function = asNumber(replacement.counted);
        VirtualProtect(&import, sizeof import, protection, &protection);
        return;
    }
}

}   // namespace

const char* const kPlatform = "windows";

double cpuNanoseconds()
{
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    const auto hundreds = [](const FILETIME& time) {
        return static_cast<double>((uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
    };
    return (hundreds(kernel) + hundreds(user)) * 100;
}

void countAllocationsOf(void* library)
{
    auto* const base = static_cast<uint8_t*>(library);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* entry = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         entry->Name; ++entry)
        for (auto* import = reinterpret_cast<IMAGE_THUNK_DATA*>(base + entry->FirstThunk);
             import->u1.Function; ++import)
            replace(*import);
}

}   // namespace orvo::bench
