#include "aikctl/console/Table.h"

#include <algorithm>
#include <ostream>

namespace orvo::aikctl {

void Table::print(std::ostream& out) const
{
    std::vector<size_t> widths(m_rows.front().size());
    for (const auto& row : m_rows)
        for (size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());

    for (const auto& row : m_rows) {
        std::string line;
        for (size_t column = 0; column < row.size(); ++column) {
            const std::string& cell = row[column];
            line += cell + std::string(widths[column] + 2 - cell.size(), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
    out << std::flush;
}

}   // namespace orvo::aikctl
