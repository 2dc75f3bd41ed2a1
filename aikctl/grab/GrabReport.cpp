#include "aikctl/grab/GrabReport.h"

#include <iomanip>
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

// "24 in 3 gaps, 0.8 s", "12 on the board", or both.
std::string lostText(const GrabResult& result)
{
    const GrabIntervals& intervals = result.intervals;
    std::ostringstream text;
    if (!intervals.lost && result.record.lostByOverflow == 0)
        return "?";
    text << intervals.lost.value_or(0) + result.record.lostByOverflow;
    if (intervals.lost.value_or(0) > 0) {
        text << " in " << intervals.gaps << (intervals.gaps == 1 ? " gap" : " gaps");
        if (intervals.gapSeconds > 0)
            text << " of " << std::setprecision(3) << intervals.gapSeconds << " s";
    }
    if (result.record.lostByOverflow > 0)
        text << (intervals.lost.value_or(0) > 0 ? ", " : " (") << result.record.lostByOverflow
             << " on the board" << (intervals.lost.value_or(0) > 0 ? "" : ")");
    return text.str();
}

nlohmann::ordered_json toJson(const GrabAccount& account, uint64_t saved)
{
    return {{"counted", account.counted},         {"saved", saved},
            {"unsaved", account.fetched - saved}, {"skipped", account.skipped},
            {"leftInRing", account.leftInRing},   {"afterLast", account.afterLast}};
}

nlohmann::ordered_json orNull(const std::optional<uint64_t>& number)
{
    return number ? nlohmann::ordered_json(*number) : nlohmann::ordered_json();
}

}   // namespace

void GrabReport::printTable(std::ostream& out) const
{
    uint64_t saved = 0;
    Table table({"channel", "size", "format of the first picture", "saved", "skipped", "left", "after",
                 "counted", "lost", "pictures/s"});
    for (const ChannelGrab& grab : m_session.grabs()) {
        const GrabResult& result = grab.result();
        saved += result.pictures;
        table.add({std::to_string(grab.channel().index()),
                   std::to_string(grab.channel().width()) + " x " + std::to_string(grab.channel().height()),
                   orDash(result.format), std::to_string(result.pictures),
                   std::to_string(result.account.skipped), std::to_string(result.account.leftInRing),
                   std::to_string(result.account.afterLast), std::to_string(result.account.counted),
                   lostText(result), rateText(result.picturesPerSecond)});
    }
    table.print(out);
    printActions(out);
    out << '\n'
        << (m_wasInterrupted ? "interrupted; " : "") << "saved " << saved
        << (saved == 1 ? " picture in " : " pictures in ") << m_folder.path().string() << std::endl;
}

void GrabReport::printActions(std::ostream& out) const
{
    for (const ActionCommands& commands : m_session.actions()) {
        out << '\n' << commands.board << ": ";
        if (commands.channels == 1)
            out << commands.sent
                << " action commands were sent; with one channel there is nothing to compare\n";
        else
            out << commands.matched << " of " << commands.sent
                << " action commands made pictures of one time stamp on all channels (" << commands.channels
                << ")\n";
    }
}

nlohmann::ordered_json GrabReport::toJson() const
{
    nlohmann::ordered_json report = {{"folder", m_folder.path().string()}, {"interrupted", m_wasInterrupted}};
    if (!m_session.actions().empty()) {
        uint64_t sent = 0;
        uint64_t matched = 0;
        for (const ActionCommands& commands : m_session.actions()) {
            sent += commands.sent;
            matched += commands.matched;
        }
        report["action"] = {{"sent", sent}, {"matched", matched}};
    }
    auto& entries = report["channels"] = nlohmann::ordered_json::array();
    for (const ChannelGrab& grab : m_session.grabs()) {
        const GrabResult& result = grab.result();
        entries.push_back({{"channel", grab.channel().index()},
                           {"width", grab.channel().width()},
                           {"height", grab.channel().height()},
                           {"format", result.format},
                           {"pictures", result.pictures},
                           {"account", aikctl::toJson(result.account, result.pictures)},
                           {"lost",
                            {{"inGaps", orNull(result.intervals.lost)},
                             {"onBoard", result.record.lostByOverflow},
                             {"gaps", result.intervals.gaps},
                             {"gapSeconds", result.intervals.gapSeconds}}},
                           {"picturesPerSecond", result.picturesPerSecond},
                           {"timestamps", result.record.timestamps},
                           {"note", result.note},
                           {"failure", result.failure},
                           {"failedStep", result.failedStep}});
    }
    return report;
}

}   // namespace orvo::aikctl
