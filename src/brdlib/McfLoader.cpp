#include "brdlib/McfLoader.h"

#include "AIKException.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

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
