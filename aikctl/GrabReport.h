#pragma once

#include <deque>
#include <iosfwd>

#include "aikctl/ChannelGrab.h"

namespace orvo::aikctl {

/// The table at the end of a grab.
class GrabReport {
public:
    /// All outlive the report.
    GrabReport(const std::deque<ChannelGrab>& grabs, const PictureFolder& folder, bool wasInterrupted)
        : m_grabs(grabs), m_folder(folder), m_wasInterrupted(wasInterrupted)
    {}

    void printTable(std::ostream& out) const;
    void printJson(std::ostream& out) const;

private:
    void printShots(std::ostream& out) const;

    const std::deque<ChannelGrab>& m_grabs;
    const PictureFolder& m_folder;
    const bool m_wasInterrupted;
};

}   // namespace orvo::aikctl
