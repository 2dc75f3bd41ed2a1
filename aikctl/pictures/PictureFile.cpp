#include "aikctl/pictures/PictureFile.h"

#include <stdexcept>

#include "aikctl/pictures/PixelFormat.h"

namespace orvo::aikctl {

void encode(const aik::Picture& picture, const Encoding& encoding, PictureFile& file)
{
    if (picture.bytes.empty())
        throw std::runtime_error("A picture of " + std::to_string(picture.width) + " x " +
                                 std::to_string(picture.height) + " has no pixels");
    const PixelFormat* const format =
        findPixelFormat(picture.format, picture.bytesPerPixel, picture.isPlanar);
    file.note.clear();
    if (format && encoding.format != FileFormat::Raw) {
        file.ending = "png";
        file.bytes = encodePng(format->toPicture(picture.bytes, picture.width, picture.height));
        return;
    }
    if (!format && encoding.format != FileFormat::Raw)
        file.note = "saved raw, for no PNG can show this: " +
                    describePixelFormat(picture.format, picture.bytesPerPixel, picture.isPlanar);
    file.ending = "raw";
    file.bytes.assign(picture.bytes.begin(), picture.bytes.end());
}

}   // namespace orvo::aikctl
