#include "brdlib/AppletLoader.h"

#include <algorithm>
#include <cctype>

#include <boost/filesystem.hpp>

#include "AIKException.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/BoardWrapper.h"
#include "brdlib/binding/BrdFunctions.h"
#include "features/NumberText.h"
#include "os/Os.h"

namespace orvo::cognex {

namespace {

constexpr const char* kVariablePrefix = "ORVO_COGNEX_APPLET_";
constexpr size_t kPathLimit = 255;

using CreateLoader = std::unique_ptr<AppletLoader>(const std::string& path,
                                                   std::weak_ptr<BoardWrapper> board);
constexpr CreateLoader* kLoaders[] = {DllLoader::create, HapLoader::create, McfLoader::create};

bool isRegularFile(const std::string& path)
{
    boost::system::error_code ignored;
    return boost::filesystem::status(path, ignored).type() == boost::filesystem::regular_file;
}

}   // namespace

AppletLoader::AppletLoader(std::string path, std::weak_ptr<BoardWrapper> board)
    : m_path(std::move(path)), m_board(std::move(board))
{}

std::unique_ptr<AppletWrapper> AppletLoader::loadWith(OpenBoard* open) const
{
    const int32_t index = locked(m_board)->index();
    void* const handle = open(m_path.c_str(), static_cast<uint32_t>(index), 0);
    if (!handle)
        throwBrdError(Brd_getLastErrorNumber(nullptr));
    return std::make_unique<AppletWrapper>(handle);
}

bool AppletLoader::holds(const std::string& path, const char* mark)
{
    std::string upper = path;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper.find(mark) != std::string::npos;
}

std::string appletVariable(const BoardWrapper& board)
{
    return kVariablePrefix + toText(static_cast<uint64_t>(board.index()));
}

std::string appletPath(const std::weak_ptr<BoardWrapper>& board)
{
    const std::string variable = appletVariable(*locked(board));
    std::string path = os::environmentVariable(variable);
    if (path.empty())
        throw AIKException(variable + " is not a valid environment variable.");
    if (path.size() >= kPathLimit || !isRegularFile(path))
        throw AIKException(variable + " does not refer to a valid file.");
    return path;
}

std::unique_ptr<AppletLoader> chooseLoader(const std::weak_ptr<BoardWrapper>& board)
{
    const std::string path = appletPath(board);
    for (CreateLoader* const create : kLoaders) {
        try {
            return create(path, board);
        } catch (...) {   // a refusal means no more than: ask the next
        }
    }
    return nullptr;
}

std::unique_ptr<AppletLoader> DllLoader::create(const std::string& path, std::weak_ptr<BoardWrapper> board)
{
    if (!holds(path, "DLL"))
        throw AIKException("Path does not refer a dll applet.");
    return std::unique_ptr<AppletLoader>(new DllLoader(path, std::move(board)));
}

std::unique_ptr<AppletWrapper> DllLoader::load()
{
    return loadWith(Brd_InitEx);
}

std::unique_ptr<AppletLoader> HapLoader::create(const std::string& path, std::weak_ptr<BoardWrapper> board)
{
    if (!holds(path, "HAP"))
        throw AIKException("Path does not refer to a hap file!");
    return std::unique_ptr<AppletLoader>(new HapLoader(path, std::move(board)));
}

std::unique_ptr<AppletWrapper> HapLoader::load()
{
    return loadWith(Brd_InitEx);
}

std::unique_ptr<AppletLoader> McfLoader::create(const std::string& path, std::weak_ptr<BoardWrapper> board)
{
    if (!holds(path, ".MCF"))
        throw AIKException("Given path does not refer an mcf file!");
    return std::unique_ptr<AppletLoader>(new McfLoader(path, std::move(board)));
}

std::unique_ptr<AppletWrapper> McfLoader::load()
{
    return loadWith(Brd_InitConfigEx);
}

}   // namespace orvo::cognex
