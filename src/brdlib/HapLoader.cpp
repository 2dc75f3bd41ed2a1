#include "brdlib/HapLoader.h"

#include "AIKException.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

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

}   // namespace orvo::cognex
