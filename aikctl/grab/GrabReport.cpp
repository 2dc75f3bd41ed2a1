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

// "24 in 3 gaps of 0.8 s", "12 on the board", both, or that there are none or nothing is known.
std::string lostText(const GrabResult& result)
{
    const GrabIntervals& intervals = result.intervals;
    const uint64_t inGaps = intervals.lost.value_or(0);
    const uint64_t onBoard = result.record.lostByOverflow;
    if (inGaps + onBoard == 0)
        return intervals.lost ? "0" : "?";
    std::ostringstream text;
    text << std::setprecision(3);
    if (inGaps > 0)
        text << inGaps << " in " << intervals.gaps << (intervals.gaps == 1 ? " gap of " : " gaps of ")
             << intervals.gapSeconds << " s";
    if (inGaps > 0 && onBoard > 0)
        text << " + ";
    if (onBoard > 0)
        text << onBoard << " on the board";
    return text.str();
}

const char* nameOf(Bottleneck bottleneck)
{
    switch (bottleneck) {
    case Bottleneck::Ring:
        return "ring";
    case Bottleneck::Encoder:
        return "encoder";
    case Bottleneck::Disk:
        return "disk";
    case Bottleneck::Board:
        break;
    }
    return "board";
}

nlohmann::ordered_json orNull(const std::optional<uint64_t>& number)
{
    return number ? nlohmann::ordered_json(*number) : nlohmann::ordered_json();
}

}   // namespace

void GrabReport::printTable(std::ostream& out) const
{
    uint64_t pictures = 0;
    Table table({"channel", "size", "format of the first picture", m_session.isSaving() ? "saved" : "fetched",
                 "skipped", "left", "after", "counted", "lost", "pictures/s", "bottleneck"});
    for (const ChannelGrab& grab : m_session.grabs()) {
        const GrabResult& result = grab.result();
        const GrabAccount& account = result.account;
        const uint64_t shown = m_session.isSaving() ? grab.saved().count : account.fetched;
        pictures += shown;
        table.add({std::to_string(grab.channel().index()),
                   std::to_string(grab.channel().width()) + " x " + std::to_string(grab.channel().height()),
                   orDash(result.format), std::to_string(shown), std::to_string(account.skipped),
                   std::to_string(account.leftInRing), std::to_string(account.afterLast),
                   std::to_string(account.counted), lostText(result), rateText(result.picturesPerSecond),
                   account.fetched == 0 ? "-" : nameOf(result.bottleneck)});
    }
    table.print(out);
    if (!m_session.isSaving())
        printIntervals(out);
    printActions(out);
    out << '\n'
        << (m_wasInterrupted ? "interrupted; " : "") << (m_session.isSaving() ? "saved " : "discarded ")
        << pictures << (pictures == 1 ? " picture" : " pictures") << (m_place.empty() ? "" : " in ")
        << m_place << std::endl;
}

void GrabReport::printIntervals(std::ostream& out) const
{
    constexpr double kMilliseconds = 1e3;
    Table table({"channel", "median interval", "99 %", "longest"});
    const auto text = [](double seconds) {
        std::ostringstream milliseconds;
        milliseconds << std::fixed << std::setprecision(3) << seconds * kMilliseconds << " ms";
        return seconds == 0 ? "-" : milliseconds.str();
    };
    for (const ChannelGrab& grab : m_session.grabs()) {
        const GrabIntervals& intervals = grab.result().intervals;
        table.add({std::to_string(grab.channel().index()), text(intervals.medianSeconds),
                   text(intervals.p99Seconds), text(intervals.longestSeconds)});
    }
    out << '\n';
    table.print(out);
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
    using Json = nlohmann::ordered_json;
    Json report = {{"folder", m_place}, {"interrupted", m_wasInterrupted}};
    if (m_session.options().cameras.isByActionCommand) {
        uint64_t sent = 0;
        uint64_t matched = 0;
        for (const ActionCommands& commands : m_session.actions()) {
            sent += commands.sent;
            matched += commands.matched;
        }
        report["action"] = {{"sent", sent}, {"matched", matched}};
    }
    auto& boards = report["boards"] = Json::array();
    for (const GrabCameras::Board& board : m_session.boards()) {
        Json cameras = Json::array();
        for (const CameraPort& port : board.cameras.ports())
            cameras.push_back({{"port", port.number}, {"name", port.cameraName}});
        Json channels = Json::array();
        for (const aik::Channel* const channel : board.channels)
            channels.push_back(channel->index());
        boards.push_back({{"board", board.channels.front()->boardText()},
                          {"channels", std::move(channels)},
                          {"cameras", std::move(cameras)}});
    }
    auto& entries = report["channels"] = Json::array();
    for (const ChannelGrab& grab : m_session.grabs()) {
        const GrabResult& result = grab.result();
        const GrabAccount& account = result.account;
        const GrabIntervals& intervals = result.intervals;
        entries.push_back({{"channel", grab.channel().index()},
                           {"width", grab.channel().width()},
                           {"height", grab.channel().height()},
                           {"format", result.format},
                           {"bytesPerPixel", result.bytesPerPixel},
                           {"account",
                            {{"counted", account.counted},
                             {"saved", grab.saved().count},
                             {"unsaved", account.fetched - grab.saved().count},
                             {"skipped", account.skipped},
                             {"leftInRing", account.leftInRing},
                             {"afterLast", account.afterLast}}},
                           {"lost",
                            {{"pictures", orNull(intervals.lost)},
                             {"onBoard", result.record.lostByOverflow},
                             {"gaps", intervals.gaps},
                             {"gapSeconds", intervals.gapSeconds}}},
                           {"intervals",
                            {{"medianSeconds", intervals.medianSeconds},
                             {"p99Seconds", intervals.p99Seconds},
                             {"longestSeconds", intervals.longestSeconds}}},
                           {"picturesPerSecond", result.picturesPerSecond},
                           {"bottleneck", account.fetched == 0 ? Json() : Json(nameOf(result.bottleneck))},
                           {"files", grab.saved().files},
                           {"timestamps", result.record.fetchedTimestamps()},
                           {"note", grab.saved().note},
                           {"failure", result.failure},
                           {"failedStep", result.failedStep}});
    }
    return report;
}

}   // namespace orvo::aikctl
