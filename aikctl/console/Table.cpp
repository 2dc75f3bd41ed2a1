#include "aikctl/console/Table.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "aikctl/console/Text.h"

namespace orvo::aikctl {

void Table::add(std::vector<std::string> cells)
{
    std::ranges::transform(cells, cells.begin(), [](const auto& cell) { return readable(cell); });
    m_rows.push_back(std::move(cells));
}

void Table::print(std::ostream& out, size_t width) const
{
    std::vector<size_t> widths(m_rows.front().size());
    for (const auto& row : m_rows)
        for (size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], characterCount(row[column]));

    for (const auto& row : m_rows) {
        std::string line;
        size_t room = width == 0 ? std::string::npos : width;
        for (size_t column = 0; column < row.size() && room > 0; ++column) {
            const std::string cell = cut(row[column], room);
            line += cell + std::string(widths[column] + 2 - characterCount(cell), ' ');
            room -= std::min(room, widths[column] + 2);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
    out << std::flush;
}

}   // namespace orvo::aikctl
