#include "sim/pictures/PlayedFolder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include <stb/stb_image.h>
#include <stb/stb_image_resize.h>

#include "os/PathText.h"

namespace orvo::sim {

namespace {

struct FreeImage {
    void operator()(stbi_us* samples) const { stbi_image_free(samples); }
};

std::string contentOf(const std::filesystem::path& path)
{
    const std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

/// PGM and PPM files store the upper byte of a 16-bit sample first, and stb leaves it there.
bool needsSwapping(const std::string& content)
{
    const auto* bytes = reinterpret_cast<const stbi_uc*>(content.data());
    return content.starts_with('P') && stbi_is_16_bit_from_memory(bytes, static_cast<int>(content.size()));
}

constexpr std::array<std::string_view, 5> kEndings = {".png", ".jpg", ".jpeg", ".pgm", ".ppm"};

bool isPicture(const std::filesystem::path& file)
{
    std::string ending = os::textOf(file.extension());
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end();
}

std::vector<std::filesystem::path> picturesIn(const std::filesystem::path& path)
{
    std::error_code error;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(path, error))
        if (isPicture(entry.path()))
            files.push_back(entry.path());
    if (error)
        throw std::runtime_error(os::textOf(path) + ": is no folder that can be read");
    if (files.empty())
        throw std::runtime_error(os::textOf(path) + ": holds no PNG, JPEG, PGM or PPM picture");
    std::sort(files.begin(), files.end());
    return files;
}

}   // namespace

Photo Photo::read(const std::filesystem::path& path)
{
    const std::string content = contentOf(path);
    const auto* bytes = reinterpret_cast<const stbi_uc*>(content.data());
    const int size = static_cast<int>(content.size());
    int width = 0, height = 0, channels = 0;
    if (!stbi_info_from_memory(bytes, size, &width, &height, &channels))
        throw std::runtime_error(os::textOf(path) + ": is no PNG, JPEG, PGM or PPM picture");
    const int wanted = channels <= 2 ? 1 : 3;   // transparency is left out
    const std::unique_ptr<stbi_us, FreeImage> samples(
        stbi_load_16_from_memory(bytes, size, &width, &height, &channels, wanted));
    if (!samples)
        throw std::runtime_error(os::textOf(path) + ": is a damaged picture (" + stbi_failure_reason() + ")");

    Photo photo;
    photo.m_width = static_cast<uint32_t>(width);
    photo.m_height = static_cast<uint32_t>(height);
    photo.m_channels = static_cast<uint32_t>(wanted);
    const size_t count = size_t{photo.m_width} * photo.m_height * photo.m_channels;
    photo.m_samples.assign(samples.get(), samples.get() + count);
    if (needsSwapping(content))
        for (uint16_t& sample : photo.m_samples)
            sample = static_cast<uint16_t>(sample << 8 | sample >> 8);
    return photo;
}

Pixel Photo::at(uint32_t column, uint32_t row) const
{
    const uint16_t* sample = &m_samples[(size_t{row} * m_width + column) * m_channels];
    return isGrey() ? Pixel::grey(sample[0]) : Pixel{sample[0], sample[1], sample[2]};
}

Photo Photo::scaledTo(uint32_t width, uint32_t height) const
{
    if (width == m_width && height == m_height)
        return *this;
    Photo scaled;
    scaled.m_width = width;
    scaled.m_height = height;
    scaled.m_channels = m_channels;
    scaled.m_samples.resize(size_t{width} * height * m_channels);
    stbir_resize_uint16_generic(m_samples.data(), static_cast<int>(m_width), static_cast<int>(m_height), 0,
                                scaled.m_samples.data(), static_cast<int>(width), static_cast<int>(height), 0,
                                static_cast<int>(m_channels), STBIR_ALPHA_CHANNEL_NONE, 0, STBIR_EDGE_CLAMP,
                                STBIR_FILTER_DEFAULT, STBIR_COLORSPACE_LINEAR, nullptr);
    return scaled;
}

PlayedFolder::PlayedFolder(const std::filesystem::path& path)
{
    for (const std::filesystem::path& file : picturesIn(path))
        m_photos.push_back(Photo::read(file));
}

FolderPlayer::FolderPlayer(std::shared_ptr<const PlayedFolder> folder, const Geometry& geometry, bool cropped)
    : m_folder(std::move(folder)),
      m_geometry(geometry),
      m_cropped(cropped),
      m_pictures(m_folder->photos().size())
{}

void FolderPlayer::paint(uint64_t number, std::span<std::byte> block)
{
    const auto index = static_cast<size_t>((number - 1) % m_pictures.size());
    std::vector<std::byte>& picture = m_pictures[index];
    if (picture.empty())
        picture = laidOut(m_folder->photos()[index]);
    std::copy_n(picture.data(), std::min(picture.size(), block.size()), block.data());
}

std::vector<std::byte> FolderPlayer::laidOut(const Photo& photo) const
{
    std::vector<std::byte> bytes(m_geometry.bytes());
    if (bytes.empty())
        return bytes;
    const Photo shown = m_cropped ? photo : photo.scaledTo(m_geometry.width, m_geometry.height);
    const uint32_t left = m_cropped ? m_geometry.xOffset : 0;
    const uint32_t top = m_cropped ? m_geometry.yOffset : 0;
    const uint32_t columns = std::min(m_geometry.width, shown.width() - std::min(shown.width(), left));
    const uint32_t rows = std::min(m_geometry.height, shown.height() - std::min(shown.height(), top));
    for (uint32_t y = 0; y < rows; ++y) {
        std::byte* at = m_geometry.row(bytes, y).data();
        for (uint32_t x = 0; x < columns; ++x)
            at = m_geometry.format->layOut(shown.at(left + x, top + y), at);
    }
    return bytes;
}

}   // namespace orvo::sim
