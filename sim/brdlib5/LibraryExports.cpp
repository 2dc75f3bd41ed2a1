#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "sim/brdlib5/Call.h"
#include "sim/brdlib5/Outcomes.h"
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
        const Applet& applet = Library::instance().board(board)->applet();
        orvo_sim_core()->setAppletInfo(applet.info);
        return applet.file;
    }
    default:
        throw BrdError(kUnknownCode, "There is no system information " + std::to_string(code));
    }
}

void* openBoard(const char* function, const char* path, uint32_t boardIndex, int32_t flags)
{
    return exported<void*>(
        function, nullptr,
        [&](CallText& words) {
            words.text("path", path).number("boardIndex", boardIndex).number("flags", flags);
        },
        [&] {
            if (!path)
                throw BrdError(kNullArgument, "The applet's path is null");
            return Library::instance().open(path, boardIndex);
        },
        PointerOutcome(nullptr, [](void* board) { return boardSymbol(board); }));
}

/// It has no result, and frees whatever the script says.
struct FreeOutcome {
    int32_t scripted(const CallPass&) const
    {
        Library::instance().free();
        return 0;
    }
    void show(CallText&, int32_t) const {}
};

}   // namespace

int32_t Brd_InitLibraries(const char* directory)
{
    return exported<int32_t>(
        "Brd_InitLibraries", nullptr, [&](CallText& words) { words.text("directory", directory); },
        [] {
            Library::instance().init();
            return 0;
        });
}

void Brd_FreeLibraries()
{
    exported<int32_t>(
        "Brd_FreeLibraries", nullptr, [](CallText&) {},
        [] {
            Library::instance().free();
            return 0;
        },
        FreeOutcome{});
}

int32_t Brd_getBoardType(int32_t boardIndex)
{
    return exported<int32_t>(
        "Brd_getBoardType", nullptr, [&](CallText& words) { words.number("boardIndex", boardIndex); },
        [&] { return Library::instance().boardType(boardIndex); });
}

const char* Brd_getBoardNameByType(int32_t type, int32_t one)
{
    return exported<const char*>(
        "Brd_getBoardNameByType", nullptr,
        [&](CallText& words) { words.number("type", type).number("one", one); },
        [&] { return keptText(boardNameOf(type)); });
}

int32_t Brd_getSystemInformation(void* board, int32_t code, int32_t property, int32_t boardIndex,
                                 void* buffer, uint32_t* length)
{
    return exported<int32_t>(
        "Brd_getSystemInformation", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).number("code", code).number("property", property);
            words.number("boardIndex", boardIndex).pointer("buffer", buffer);
            if (buffer && length)
                words.number("length", *length);
        },
        [&] {
            const std::string text = systemInformation(board, code, boardIndex);
            handOut(std::as_bytes(std::span(text.c_str(), text.size() + 1)), buffer, length);
            return 0;
        },
        BufferOutcome(board, buffer, length));
}

void* Brd_InitEx(const char* path, uint32_t boardIndex, int32_t flags)
{
    return openBoard("Brd_InitEx", path, boardIndex, flags);
}

void* Brd_InitConfigEx(const char* path, uint32_t boardIndex, int32_t flags)
{
    return openBoard("Brd_InitConfigEx", path, boardIndex, flags);
}

int32_t Brd_FreeGrabber(void* board)
{
    return exported<int32_t>(
        "Brd_FreeGrabber", board, [&](CallText& words) { words.word("board", boardSymbol(board)); },
        [&] {
            Library::instance().close(board);
            return 0;
        });
}

int32_t Brd_getLastErrorNumber(void* board)
{
    return exported<int32_t>(
        "Brd_getLastErrorNumber", board, [&](CallText& words) { words.word("board", boardSymbol(board)); },
        [&] { return Library::instance().lastErrorNumber(board); });
}

const char* Brd_getLastErrorDescription(void* board)
{
    return exported<const char*>(
        "Brd_getLastErrorDescription", board,
        [&](CallText& words) { words.word("board", boardSymbol(board)); },
        [&]() -> const char* {
            Library::instance().copyLastErrorText(board, g_text);
            return g_text.data();
        });
}
