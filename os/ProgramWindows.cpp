#include "os/Program.h"

#include <atomic>

#include <windows.h>

namespace orvo::os {

namespace {

std::atomic<bool> g_interrupted{false};
std::atomic<UINT> g_exitStatus{0};

// On a thread that the system makes for it. FALSE passes the event on, which ends the process.
BOOL WINAPI noteInterrupt(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        return FALSE;
    if (g_interrupted.exchange(true))
        TerminateProcess(GetCurrentProcess(), g_exitStatus);   // no library may hold it up
    return TRUE;
}

}   // namespace

void setEnvironmentVariable(const std::string& name, const std::string& value)
{
    SetEnvironmentVariableA(name.c_str(), value.empty() ? nullptr : value.c_str());
}

void catchInterrupts(int exitStatus)
{
    g_exitStatus = static_cast<UINT>(exitStatus);
    SetConsoleCtrlHandler(noteInterrupt, TRUE);
}

bool interrupted()
{
    return g_interrupted;
}

bool standardErrorIsTerminal()
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

}   // namespace orvo::os
