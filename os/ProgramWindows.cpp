#include "os/Program.h"

#include <atomic>
#include <cstdio>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "os/Os.h"
#include "os/PathText.h"

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

void mendEnvironmentVariable(const std::string& name)
{
    const std::string whole = textOf(pathVariable(name));
    const std::string read = environmentVariable(name);
    if (read.size() < whole.size())
        setEnvironmentVariable(name, whole + std::string(whole.size() - read.size(), ' '));
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

void guardStandardStreams() {}

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
    for (FILE* const stream : {stdout, stderr}) {
        if (_isatty(_fileno(stream)) == 0)
            continue;
        // Without a buffer the C library hands every byte to the console alone, and in text mode it takes them
        // for characters of its own locale.
        std::setvbuf(stream, nullptr, _IOFBF, BUFSIZ);
        _setmode(_fileno(stream), _O_BINARY);
    }
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
