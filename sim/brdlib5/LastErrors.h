#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

namespace orvo::sim {

/// The latest failure of each board, and of the calls that have none. Threads: any.
class LastErrors {
public:
    static constexpr size_t kNoBoard = 8;   // the slot behind those of the board indices

    void clear();
    void set(size_t slot, int32_t number, std::string_view text);
    int32_t number(size_t slot) const;
    /// Copies the text, cut if need be, with a NUL.
    void copyText(size_t slot, std::span<char> buffer) const;

private:
    struct Entry {
        int32_t number = 0;
        std::string text;
    };

    mutable std::mutex m_mutex;
    std::array<Entry, kNoBoard + 1> m_entries;
};

}   // namespace orvo::sim
