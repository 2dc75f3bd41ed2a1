#include "templates/platform/Singletons.h"

#include <cstdint>
#include <cstdio>

#include "templates/platform/Locks.h"

namespace orvo::templates::platform {

namespace {

SpinLockVariable g_lock{0};
SpinLockVariable g_owner{0};
LibraryInitController* g_instance ORVO_GUARDED_BY(g_lock) = nullptr;
uint32_t g_useCount ORVO_GUARDED_BY(g_lock) = 0;

void traceInstance(const char* step) ORVO_REQUIRES(g_lock)
{
    if (LibraryInitController::s_consoleTrace)
        std::printf("%s%p\n", step, static_cast<void*>(g_instance));
}

void traceUse(const char* step, uint32_t count) ORVO_REQUIRES(g_lock)
{
    if (LibraryInitController::s_consoleTrace)
        std::printf("%s%p - Use Count: %u\n", step, static_cast<void*>(g_instance), count);
}

}   // namespace

bool LibraryInitController::s_consoleTrace = false;

void LibraryInitController::init()
{
    const SpinLockVariableGuard guard(g_lock, &g_owner);
    if (g_useCount == 0) {
        g_instance = new LibraryInitController;
        traceInstance("LibraryInitController [Create ] - Instance: ");
    }
    ++g_useCount;
    traceUse("LibraryInitController [Init   ] - Instance: ", g_useCount);
}

void LibraryInitController::deinit()
{
    const SpinLockVariableGuard guard(g_lock, &g_owner);
    traceUse("LibraryInitController [Deinit ] - Instance: ", g_useCount - 1);
    if (--g_useCount > 0)
        return;
    for (const CleanUp cleanUp : g_instance->m_cleanUps)
        cleanUp();
    g_instance->destroySingletons();
    traceInstance("LibraryInitController [Destroy] - Instance: ");
    delete g_instance;
    g_instance = nullptr;
}

void LibraryInitController::registerSingleton(GuardedSingletonBase* singleton)
{
    const SpinLockVariableGuard guard(g_lock, &g_owner);
    if (g_instance)
        g_instance->m_singletons.push_back(singleton);
}

void LibraryInitController::addCleanUp(CleanUp function)
{
    const SpinLockVariableGuard guard(g_lock, &g_owner);
    if (g_instance)
        g_instance->m_cleanUps.push_back(function);
}

void LibraryInitController::destroySingletons()
{
    for (GuardedSingletonBase* singleton : m_singletons) {
        singleton->preDestruction();
        GuardedSingletonBase** const address = singleton->instanceAddress();
        delete singleton;
        *address = nullptr;
    }
}

}   // namespace orvo::templates::platform
