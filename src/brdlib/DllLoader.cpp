#include "brdlib/DllLoader.h"

#include "AIKException.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

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

}   // namespace orvo::cognex
