#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvo::test {

/// A built Windows library, as its file says what it is. Only what the tests ask for is read; whatever does
/// not lie inside the file throws std::out_of_range.
class WindowsImage {
public:
    /// By name, or without one by ordinal.
    struct Imports {
        std::set<std::string> names;
        std::set<uint16_t> ordinals;
    };

    explicit WindowsImage(const std::string& path);

    std::map<uint32_t, std::string> exportsByOrdinal() const;
    /// By library, its name in lower case.
    std::map<std::string, Imports> imports() const;
    uint16_t securityFlags() const;
    std::set<std::string> sections() const;
    /// Of the symbol table, which a stripped file doesn't have.
    uint32_t symbolCount() const;
    /// Major, minor, patch, build of the version resource.
    std::optional<std::vector<uint16_t>> fileVersion() const;

private:
    template <typename T>
    T at(size_t offset) const;
    std::string textAt(size_t offset) const;
    size_t offsetOf(uint32_t address) const;
    uint32_t directory(size_t number) const;
    size_t headers() const { return at<uint32_t>(0x3C); }
    size_t sectionTable() const;
    uint16_t sectionCount() const { return at<uint16_t>(headers() + 6); }

    std::vector<char> m_bytes;
};

}   // namespace orvo::test
