#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace orvo::test {

/// Host memory between canaries. Its bytes begin as canaries too, so that an untouched one can be told.
class Canaries {
public:
    static constexpr unsigned char kCanary = 0xA5;

    explicit Canaries(size_t size) : m_size(size), m_bytes(size + 2 * kFence, kCanary) {}
    Canaries(const Canaries&) = delete;
    Canaries& operator=(const Canaries&) = delete;
    ~Canaries()
    {
        EXPECT_TRUE(intact(0, kFence)) << "The call wrote before the host's memory.";
        EXPECT_TRUE(intact(kFence + m_size, 2 * kFence + m_size))
            << "The call wrote after the host's memory.";
    }

    unsigned char* data() { return m_bytes.data() + kFence; }
    char* text() { return reinterpret_cast<char*>(data()); }
    size_t size() const { return m_size; }

    /// Whether nothing was written from `offset` on.
    bool isUntouchedFrom(size_t offset) const { return intact(kFence + offset, kFence + m_size); }
    /// The bytes that were handed out.
    std::vector<unsigned char> bytes(size_t count) const
    {
        const auto first = m_bytes.begin() + static_cast<std::ptrdiff_t>(kFence);
        return {first, first + static_cast<std::ptrdiff_t>(count)};
    }

private:
    static constexpr size_t kFence = 64;

    bool intact(size_t from, size_t to) const
    {
        return std::all_of(m_bytes.begin() + static_cast<std::ptrdiff_t>(from),
                           m_bytes.begin() + static_cast<std::ptrdiff_t>(to),
                           [](unsigned char byte) { return byte == kCanary; });
    }

    size_t m_size;
    std::vector<unsigned char> m_bytes;
};

}   // namespace orvo::test
