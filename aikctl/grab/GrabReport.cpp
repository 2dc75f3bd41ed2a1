#include "aikctl/grab/GrabReport.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <ostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "aikctl/console/Table.h"

namespace orvo::aikctl {

namespace {

std::string orDash(const std::string& text)
{
    return text.empty() ? "-" : text;
}

std::string rateText(double picturesPerSecond)
{
    if (picturesPerSecond == 0)
        return "-";
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << picturesPerSecond;
    return text.str();
}

}   // namespace

void GrabReport::printTable(std::ostream& out) const
{
    uint64_t saved = 0;
    Table table({"channel", "size", "format of the first picture", "pictures", "lost", "pictures/s"});
    for (const ChannelGrab& grab : m_grabs) {
        const GrabResult& result = grab.result();
        saved += result.pictures;
        table.add({std::to_string(grab.channel().index()),
                   std::to_string(grab.channel().width()) + " x " + std::to_string(grab.channel().height()),
                   orDash(result.format), std::to_string(result.pictures), std::to_string(result.lost),
                   rateText(result.picturesPerSecond)});
    }
    table.print(out);
    printShots(out);
    out << '\n'
        << (m_wasInterrupted ? "interrupted; " : "") << "saved " << saved
        << (saved == 1 ? " picture in " : " pictures in ") << m_folder.path().string() << std::endl;
}

/// By board, since each has a clock of its own.
void GrabReport::printShots(std::ostream& out) const
{
    std::map<std::string, std::vector<const std::vector<uint64_t>*>> boards;
    for (const ChannelGrab& grab : m_grabs)
        if (!grab.result().timestamps.empty())
            boards[grab.channel().boardText()].push_back(&grab.result().timestamps);
    for (const auto& [board, channels] : boards) {
        const std::vector<uint64_t>& first = *channels.front();
        size_t same = 0;   // shots
        const auto isSame = [&](const auto* stamps) {
            return same < stamps->size() && (*stamps)[same] == first[same];
        };
        while (same < first.size() && std::all_of(channels.begin(), channels.end(), isSame))
            ++same;
        out << '\n'
            << board << ": " << same << " of " << first.size()
            << " action commands made pictures of one time stamp on all channels (" << channels.size()
            << ")\n";
    }
}

nlohmann::ordered_json GrabReport::toJson() const
{
    nlohmann::ordered_json report = {{"folder", m_folder.path().string()}, {"interrupted", m_wasInterrupted}};
    auto& entries = report["channels"] = nlohmann::ordered_json::array();
    for (const ChannelGrab& grab : m_grabs) {
        const GrabResult& result = grab.result();
        entries.push_back({{"channel", grab.channel().index()},
                           {"width", grab.channel().width()},
                           {"height", grab.channel().height()},
                           {"format", result.format},
                           {"pictures", result.pictures},
                           {"lost", result.lost},
                           {"picturesPerSecond", result.picturesPerSecond},
                           {"timestamps", result.timestamps},
                           {"note", result.note},
                           {"failure", result.failure},
                           {"failedStep", result.failedStep}});
    }
    return report;
}

}   // namespace orvo::aikctl
