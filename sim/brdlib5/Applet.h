#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "sim/brdlib5/ParameterDescription.h"
#include "sim/pictures/BoardFormat.h"
#include "sim/pictures/PictureSource.h"

namespace orvo::sim {

/// What a DMA port of a simulated applet begins with, and how far it can be changed. Pixels.
struct DmaDescription {
    uint32_t id = 0;
    Geometry geometry;
    uint32_t maxWidth = 65'536, maxHeight = 65'536, maxXOffset = 65'535, maxYOffset = 65'535;
    uint32_t widthStep = 1, heightStep = 1, offsetStep = 1;
    double picturesPerSecond = 30;   // 0: as fast as the ring allows
    PictureChoice pictures;
};

/// A camera port of a process.
struct CameraPortDescription {
    int32_t number = 0;
    std::optional<size_t> dma;   // the position of the DMA that it feeds; nothing: it feeds none
};

struct ProcessDescription {
    std::vector<DmaDescription> dmas;                 // by position
    std::vector<CameraPortDescription> cameraPorts;   // by position; no two feed the same DMA
};

/// What a simulated applet offers, as its file says.
struct Applet {
    std::vector<ProcessDescription> processes;
    std::vector<ParameterDescription> parameters;   // besides the built-in ones
    std::set<int32_t> lacking;                      // ids of built-in parameters that it doesn't have
    std::string file;                               // its own file, in which callers look for `Info`
    int32_t info = 0;                               // what `Info` answers

    /// Reads the file at `path` for a board of that type, which settles what the file leaves out. Throws
    /// JsonError with what is wrong and where.
    static Applet read(const std::string& path, int32_t boardType);
};

}   // namespace orvo::sim
