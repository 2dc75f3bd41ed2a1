#include "os/Program.h"

#include <atomic>
#include <cstdio>

#include <fcntl.h>
#include <io.h>
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

size_t standardOutputColumns()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool isConsole = GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) != 0;
    // A console puts an empty line after one that fills it.
    return isConsole ? static_cast<size_t>(info.srWindow.Right - info.srWindow.Left) : 0;
}

Utf8Terminal::Utf8Terminal() : m_before(GetConsoleOutputCP())
{
    SetConsoleOutputCP(CP_UTF8);
    // Without a buffer of its own, the C library hands a console every byte alone.
    for (FILE* const stream : {stdout, stderr})
        std::setvbuf(stream, nullptr, _IOFBF, BUFSIZ);
}

Utf8Terminal::~Utf8Terminal()
{
    std::fflush(nullptr);   // before the code page is another one
    SetConsoleOutputCP(m_before);
}

void makeStandardOutputBinary()
{
    std::fflush(stdout);
    _setmode(_fileno(stdout), _O_BINARY);
}

}   // namespace orvo::os
