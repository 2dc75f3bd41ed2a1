#include "sim/pictures/PictureSource.h"

#include "sim/pictures/Patterns.h"
#include "sim/pictures/PlayedFolder.h"

namespace orvo::sim {

std::unique_ptr<PictureSource> PictureChoice::sourceFor(const Geometry& geometry) const
{
    switch (kind) {
    case Kind::Folder:
        return std::make_unique<FolderPlayer>(folder, geometry, cropped);
    case Kind::NumbersOnly:
        return std::make_unique<NumbersOnly>();
    case Kind::Pattern:
        break;
    }
    return std::make_unique<TestPattern>(geometry);
}

}   // namespace orvo::sim
