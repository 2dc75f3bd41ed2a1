#pragma once

#include <iosfwd>

#include <nlohmann/json_fwd.hpp>

#include "aikctl/grab/GrabSession.h"
#include "aikctl/pictures/PictureFolder.h"

namespace orvo::aikctl {

/// How a grab went, for people and for programs.
class GrabReport {
public:
    /// The session has run. It and the folder outlive the report.
    GrabReport(const GrabSession& session, const PictureFolder& folder, bool wasInterrupted)
        : m_session(session), m_folder(folder), m_wasInterrupted(wasInterrupted)
    {}

    void printTable(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    void printActions(std::ostream& out) const;

    const GrabSession& m_session;
    const PictureFolder& m_folder;
    const bool m_wasInterrupted;
};

}   // namespace orvo::aikctl
