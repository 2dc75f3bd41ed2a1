#pragma once

#include "brdlib/AppletLoader.h"

namespace orvo::cognex {

/// Loads a configuration of an applet: ".MCF" in its path.
class McfLoader : public AppletLoader {
public:
    /// Throws AIKException if the path is none of this kind.
    static std::unique_ptr<AppletLoader> create(const std::string& path, std::weak_ptr<BoardWrapper> board);

    std::unique_ptr<AppletWrapper> load() override;

private:
    using AppletLoader::AppletLoader;
};

}   // namespace orvo::cognex
