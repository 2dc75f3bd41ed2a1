#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "aik/aik.hpp"

namespace orvo::aikctl {

enum class FileFormat { Png, Pgm, Tiff, Raw };

/// What pictures are saved as.
struct Encoding {
    FileFormat format = FileFormat::Png;
    int compression = 0;   // of a PNG, from 0 for none to 9 for the smallest file; the others don't compress
};

/// The content of a file, and what its name ends in.
struct PictureFile {
    std::string ending;           // without a point, such as "png"
    std::vector<uint8_t> bytes;   // its memory is used again for the next picture
    std::string note;             // why the picture is saved raw, though that was not asked for; else empty
};

/// Fills `file` with the fetched picture. Of one that the format can't show, the bytes are kept as they are.
/// Callable on any thread, with a `file` of its own. Throws runtime_error for a picture without pixels or one
/// that is too large for the format, and bad_alloc.
void encode(const aik::Picture& fetched, const Encoding& encoding, PictureFile& file);

}   // namespace orvo::aikctl
