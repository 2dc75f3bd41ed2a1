#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace orvo::aikctl {

/// Text in columns, each as wide as its widest cell.
class Table {
public:
    explicit Table(std::vector<std::string> titles) { add(std::move(titles)); }

    /// As many cells as there are titles. They need not be UTF-8.
    void add(std::vector<std::string> cells);
    /// What has no room in a line of `width` characters is left out; 0 has room for all.
    void print(std::ostream& out, size_t width = 0) const;

private:
    std::vector<std::vector<std::string>> m_rows;   // the titles first
};

}   // namespace orvo::aikctl
