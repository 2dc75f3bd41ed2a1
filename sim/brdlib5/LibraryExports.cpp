#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "sim/brdlib5/BoardCall.h"
#include "sim/brdlib5/Library.h"
#include "sim/brdlib5/Pacer.h"
#include "sim/brdlib5/brdlib5.h"
#include "sim/seam/BoardTypes.h"

using namespace orvo::sim;

namespace {

constexpr int32_t kTimestampFrequencyCode = 100;
constexpr int32_t kBoardTextCode = 1012;
constexpr int32_t kAppletFileCode = 1300;
constexpr size_t kLongestText = 1024;

/// Where a thread finds the text that it asked for last. A plain array: nothing to run when the thread ends.
thread_local std::array<char, kLongestText> g_text;

const char* keptText(const std::string& text)
{
    const size_t length = std::min(text.size(), g_text.size() - 1);
    std::copy_n(text.data(), length, g_text.data());
    g_text[length] = '\0';
    return g_text.data();
}

std::string systemInformation(const void* board, int32_t code, int32_t boardIndex)
{
    switch (code) {
    case kTimestampFrequencyCode:
        return std::to_string(kTimestampFrequency);
    case kBoardTextCode:
        return Library::instance().boardText(boardIndex);
    case kAppletFileCode: {
        const auto opened = Library::instance().board(board);
        orvo_sim_core()->setAppletInfo(opened->applet().info);
        return opened->applet().file;
    }
    default:
        throw BrdError(kUnknownCode, "There is no system information " + std::to_string(code));
    }
}

void* openBoard(const char* function, const char* path, uint32_t boardIndex, int32_t flags)
{
    return libraryCall(function, named("path", path), named("boardIndex", boardIndex), named("flags", flags))
        .run(
            [&] {
                if (!path)
                    throw BrdError(kNullArgument, "The applet's path is null");
                return Library::instance().open(path, boardIndex);
            },
            AddressOut(boardSymbol));
}

/// It frees whatever the script says.
struct FreeAnyway : NothingOut {
    static void take(const CallPass&) { Library::instance().free(); }
};

}   // namespace

int32_t Brd_InitLibraries(const char* directory)
{
    return libraryCall(__func__, named("directory", directory)).run([] { Library::instance().init(); });
}

void Brd_FreeLibraries()
{
    const auto body = [] {
        Library::instance().free();
        return NoResult{};
    };
    libraryCall(__func__).run(body, FreeAnyway{});
}

int32_t Brd_getBoardType(int32_t boardIndex)
{
    return libraryCall(__func__, named("boardIndex", boardIndex)).run([&] {
        return Library::instance().boardType(boardIndex);
    });
}

const char* Brd_getBoardNameByType(int32_t type, int32_t one)
{
    return libraryCall(__func__, named("type", type), named("one", one)).run([&] {
        return keptText(boardNameOf(type));
    });
}

int32_t Brd_getSystemInformation(void* board, int32_t code, int32_t property, int32_t boardIndex,
                                 void* buffer, uint32_t* length)
{
    const auto body = [&] {
        const std::string text = systemInformation(board, code, boardIndex);
        handOut(std::as_bytes(std::span(text.c_str(), text.size() + 1)), buffer, length);
    };
    return boardCall(__func__, board, named("code", code), named("property", property),
                     named("boardIndex", boardIndex), bufferArgument(buffer, length))
        .run(body, BufferOut(buffer, length));
}

void* Brd_InitEx(const char* path, uint32_t boardIndex, int32_t flags)
{
    return openBoard(__func__, path, boardIndex, flags);
}

void* Brd_InitConfigEx(const char* path, uint32_t boardIndex, int32_t flags)
{
    return openBoard(__func__, path, boardIndex, flags);
}

int32_t Brd_FreeGrabber(void* board)
{
    return boardCall(__func__, board).run([&] { Library::instance().close(board); });
}

int32_t Brd_getLastErrorNumber(void* board)
{
    return boardCall(__func__, board).run([&] { return Library::instance().lastErrorNumber(board); });
}

const char* Brd_getLastErrorDescription(void* board)
{
    return boardCall(__func__, board).run([&]() -> const char* {
        Library::instance().copyLastErrorText(board, g_text);
        return g_text.data();
    });
}
