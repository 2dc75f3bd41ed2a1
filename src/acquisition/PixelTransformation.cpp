#include "acquisition/PixelTransformation.h"

#include <cstring>

#include "acquisition/PlaneSplit.h"
#include "acquisition/buffers/Buffer.h"

namespace orvo::cognex {

namespace {

template <typename Transformation>
std::shared_ptr<PixelTransformation> make()
{
    return std::make_shared<Transformation>();
}

constexpr TransformationRow kTransformations[] = {
    {"NoTransformation", 0, false, make<NoTransformation>},
    {"RGB8PackedToPlanar", 1, true, make<RGB8PackedToPlanar>},
};

}   // namespace

void NoTransformation::transform(void* destination, const std::weak_ptr<Buffer>& image)
{
    const auto buffer = locked(image);
    if (buffer->size() > 0)
        std::memcpy(destination, buffer->data(), buffer->size());
}

template <typename T>
void RGBPackedToPlanar<T>::transform(void* destination, const std::weak_ptr<Buffer>& image)
{
    static_assert(sizeof(T) == 1);
    const auto buffer = locked(image);
    splitIntoPlanes(static_cast<T*>(destination), static_cast<const T*>(buffer->data()), buffer->size() / 3);
}

template class RGBPackedToPlanar<unsigned char>;

std::span<const TransformationRow> transformations()
{
    return kTransformations;
}

}   // namespace orvo::cognex
