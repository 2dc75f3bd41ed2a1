#pragma once

#include <deque>
#include <iosfwd>

#include <nlohmann/json_fwd.hpp>

#include "aikctl/grab/ChannelGrab.h"

namespace orvo::aikctl {

/// How a grab went, for people and for programs.
class GrabReport {
public:
    /// The grabs are done. They and the folder outlive the report.
    GrabReport(const std::deque<ChannelGrab>& grabs, const PictureFolder& folder, bool wasInterrupted)
        : m_grabs(grabs), m_folder(folder), m_wasInterrupted(wasInterrupted)
    {}

    void printTable(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    void printShots(std::ostream& out) const;

    const std::deque<ChannelGrab>& m_grabs;
    const PictureFolder& m_folder;
    const bool m_wasInterrupted;
};

}   // namespace orvo::aikctl
