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

const LoaderKind kDllLoader{"DLL", "Path does not refer a dll applet.", Brd_InitEx};
const LoaderKind kHapLoader{"HAP", "Path does not refer to a hap file!", Brd_InitEx};
const LoaderKind kMcfLoader{".MCF", "Given path does not refer an mcf file!", Brd_InitConfigEx};

namespace {

constexpr const LoaderKind* kLoaders[] = {&kDllLoader, &kHapLoader, &kMcfLoader};   // the first that fits

constexpr const char* kVariablePrefix = "ORVO_COGNEX_APPLET_";
constexpr size_t kPathLimit = 255;

bool isRegularFile(const std::string& path)
{
    boost::system::error_code ignored;
    return boost::filesystem::status(path, ignored).type() == boost::filesystem::regular_file;
}

}   // namespace

std::unique_ptr<AppletLoader> LoaderKind::create(const std::string& path,
                                                 std::weak_ptr<BoardWrapper> board) const
{
    std::string upper = path;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (upper.find(mark) == std::string::npos)
        throw AIKException(refusal);
    return std::make_unique<AppletLoader>(*this, path, std::move(board));
}

AppletLoader::AppletLoader(const LoaderKind& kind, std::string path, std::weak_ptr<BoardWrapper> board)
    : m_kind(kind), m_path(std::move(path)), m_board(std::move(board))
{}

std::unique_ptr<AppletWrapper> AppletLoader::load() const
{
    const int32_t index = locked(m_board)->index();
    void* const handle = m_kind.open(m_path.c_str(), static_cast<uint32_t>(index), 0);
    if (!handle)
        throwBrdError(Brd_getLastErrorNumber(nullptr));
    return std::make_unique<AppletWrapper>(handle);
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
    for (const LoaderKind* const kind : kLoaders) {
        try {
            return kind->create(path, board);
        } catch (...) {   // a refusal means no more than: ask the next
        }
    }
    return nullptr;
}

}   // namespace orvo::cognex
