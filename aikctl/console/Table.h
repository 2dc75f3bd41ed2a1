#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orvo::aikctl {

/// Text in columns, each as wide as its widest cell.
class Table {
public:
    explicit Table(std::vector<std::string> titles) : m_rows{std::move(titles)} {}

    /// As many cells as there are titles.
    void add(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }
    void print(std::ostream& out) const;

private:
    std::vector<std::vector<std::string>> m_rows;   // the titles first
};

}   // namespace orvo::aikctl
