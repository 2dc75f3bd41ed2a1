#include "acquisition/PixelTransformation.h"

#include <cstddef>
#include <cstring>

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
    const auto buffer = locked(image);
    const T* const packed = static_cast<const T*>(buffer->data());
    const size_t pixels = buffer->size() / (3 * sizeof(T));
    T* const first = static_cast<T*>(destination);
    T* const second = first + pixels;
    T* const third = second + pixels;
    for (size_t i = 0; i < pixels; ++i) {
        first[i] = packed[3 * i + 2];
        second[i] = packed[3 * i + 1];
        third[i] = packed[3 * i];
    }
}

template class RGBPackedToPlanar<unsigned char>;

std::span<const TransformationRow> transformations()
{
    return kTransformations;
}

}   // namespace orvo::cognex
