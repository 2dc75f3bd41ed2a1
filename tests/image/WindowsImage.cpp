#include "tests/image/WindowsImage.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace orvo::test {

namespace {

// Offsets and numbers of the file format.
constexpr size_t kOptionalHeader = 24;   // from the headers' begin
constexpr size_t kSecurityFlags = kOptionalHeader + 70;
constexpr size_t kDirectories = kOptionalHeader + 112;
constexpr size_t kExportDirectory = 0;
constexpr size_t kImportDirectory = 1;
constexpr size_t kSectionSize = 40;
constexpr size_t kSectionNameSize = 8;
constexpr size_t kImportEntrySize = 20;
constexpr uint64_t kByOrdinal = uint64_t{1} << 63;
constexpr uint32_t kFixedFileInfo = 0xFEEF04BD;

}   // namespace

WindowsImage::WindowsImage(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    m_bytes.assign(std::istreambuf_iterator<char>(file), {});
}

template <typename T>
T WindowsImage::at(size_t offset) const
{
    if (offset + sizeof(T) > m_bytes.size())
        throw std::out_of_range("outside the file");
    T value{};
    std::memcpy(&value, m_bytes.data() + offset, sizeof value);
    return value;
}

std::string WindowsImage::textAt(size_t offset) const
{
    std::string text;
    while (const char c = at<char>(offset++))
        text += c;
    return text;
}

size_t WindowsImage::sectionTable() const
{
    return headers() + kOptionalHeader + at<uint16_t>(headers() + 20);
}

size_t WindowsImage::offsetOf(uint32_t address) const
{
    for (size_t i = 0; i < sectionCount(); ++i) {
        const size_t section = sectionTable() + i * kSectionSize;
        const auto begin = at<uint32_t>(section + 12);
        const auto size = at<uint32_t>(section + 16);
        if (address >= begin && address - begin < size)
            return at<uint32_t>(section + 20) + (address - begin);
    }
    throw std::out_of_range("an address outside all sections");
}

uint32_t WindowsImage::directory(size_t number) const
{
    return at<uint32_t>(headers() + kDirectories + number * 8);
}

std::map<uint32_t, std::string> WindowsImage::exportsByOrdinal() const
{
    const size_t table = offsetOf(directory(kExportDirectory));
    const auto base = at<uint32_t>(table + 16);
    const auto addressCount = at<uint32_t>(table + 20);
    const auto nameCount = at<uint32_t>(table + 24);
    const size_t addresses = offsetOf(at<uint32_t>(table + 28));
    const size_t names = offsetOf(at<uint32_t>(table + 32));
    const size_t ordinals = offsetOf(at<uint32_t>(table + 36));
    std::map<uint32_t, std::string> exports;
    for (uint32_t i = 0; i < addressCount; ++i)
        if (at<uint32_t>(addresses + i * 4) != 0)
            exports[base + i] = "";
    for (uint32_t i = 0; i < nameCount; ++i)
        exports[base + at<uint16_t>(ordinals + i * 2)] = textAt(offsetOf(at<uint32_t>(names + i * 4)));
    return exports;
}

std::map<std::string, WindowsImage::Imports> WindowsImage::imports() const
{
    std::map<std::string, Imports> libraries;
    for (size_t entry = offsetOf(directory(kImportDirectory)); const auto name = at<uint32_t>(entry + 12);
         entry += kImportEntrySize) {
        std::string library = textAt(offsetOf(name));
        std::transform(library.begin(), library.end(), library.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        Imports& imports = libraries[library];
        for (size_t lookup = offsetOf(at<uint32_t>(entry)); const auto value = at<uint64_t>(lookup);
             lookup += 8) {
            if (value & kByOrdinal)
                imports.ordinals.insert(static_cast<uint16_t>(value));
            else
                imports.names.insert(textAt(offsetOf(static_cast<uint32_t>(value)) + 2));
        }
    }
    return libraries;
}

uint16_t WindowsImage::securityFlags() const
{
    return at<uint16_t>(headers() + kSecurityFlags);
}

std::set<std::string> WindowsImage::sections() const
{
    std::set<std::string> names;
    for (size_t i = 0; i < sectionCount(); ++i) {
        const char* const name = m_bytes.data() + sectionTable() + i * kSectionSize;
        names.emplace(name, strnlen(name, kSectionNameSize));
    }
    return names;
}

uint32_t WindowsImage::symbolCount() const
{
    return at<uint32_t>(headers() + 16);
}

std::optional<std::vector<uint16_t>> WindowsImage::fileVersion() const
{
    for (size_t offset = 0; offset + sizeof(uint32_t) <= m_bytes.size(); offset += sizeof(uint32_t)) {
        if (at<uint32_t>(offset) == kFixedFileInfo)
            return std::vector{at<uint16_t>(offset + 10), at<uint16_t>(offset + 8), at<uint16_t>(offset + 14),
                               at<uint16_t>(offset + 12)};
    }
    return std::nullopt;
}

}   // namespace orvo::test
