#include "sim/pictures/PictureFolder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace orvo::sim {

namespace {

constexpr std::array<std::string_view, 5> kEndings = {".png", ".jpg", ".jpeg", ".pgm", ".ppm"};

bool isPicture(const std::filesystem::path& file)
{
    std::string ending = file.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end();
}

std::vector<std::string> picturesIn(const std::string& path)
{
    std::error_code error;
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(path, error))
        if (isPicture(entry.path()))
            files.push_back(entry.path().string());
    if (error)
        throw std::runtime_error(path + ": is no folder that can be read");
    if (files.empty())
        throw std::runtime_error(path + ": holds no PNG, JPEG, PGM or PPM picture");
    std::sort(files.begin(), files.end());
    return files;
}

}   // namespace

PictureFolder::PictureFolder(const std::string& path)
{
    for (const std::string& file : picturesIn(path))
        m_photos.push_back(Photo::read(file));
}

FolderPlayer::FolderPlayer(std::shared_ptr<const PictureFolder> folder, const Geometry& geometry,
                           bool cropped)
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
            at = layOut(m_geometry.format, shown.at(left + x, top + y), at);
    }
    return bytes;
}

}   // namespace orvo::sim
