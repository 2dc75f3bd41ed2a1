#pragma once

#include <iosfwd>
#include <string>
#include <utility>

#include <nlohmann/json_fwd.hpp>

#include "aikctl/grab/GrabSession.h"

namespace orvo::aikctl {

/// How a grab went, for people and for programs.
class GrabReport {
public:
    /// The session has run, and outlives the report. `place`: where the pictures are; empty if they were
    /// discarded.
    GrabReport(const GrabSession& session, std::string place, bool wasInterrupted)
        : m_session(session), m_place(std::move(place)), m_wasInterrupted(wasInterrupted)
    {}

    void printTable(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    void printActions(std::ostream& out) const;
    void printIntervals(std::ostream& out) const;

    const GrabSession& m_session;
    const std::string m_place;
    const bool m_wasInterrupted;
};

}   // namespace orvo::aikctl
