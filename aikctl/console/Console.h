#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include <nlohmann/json_fwd.hpp>

namespace orvo::aikctl {

/// What a command writes: results to one stream, everything else to the other.
/// Threads: one.
class Console {
public:
    /// `interrupted` tells whether the user has asked the program to end. The streams outlive the console.
    Console(std::ostream& out, std::ostream& err, bool isTerminal, std::function<bool()> interrupted);

    std::ostream& out() { return m_out; }
    /// Whether the stream for everything else reaches a terminal.
    bool isTerminal() const { return m_isTerminal; }
    bool interrupted() const { return m_interrupted(); }

    /// Writes a result as JSON. Texts may come from boards: bytes that are not UTF-8 are replaced.
    void print(const nlohmann::ordered_json& result);
    void note(const std::string& text);
    /// Says what failed; the program's exit code will tell that something did.
    void fail(const std::string& text);
    bool hasFailed() const { return m_hasFailed; }

    /// Replaces the progress shown so far with `text`; an empty one clears it.
    void progress(const std::string& text);

private:
    std::ostream& m_out;
    std::ostream& m_err;
    const bool m_isTerminal;
    const std::function<bool()> m_interrupted;
    bool m_hasFailed = false;
    size_t m_shown = 0;   // characters of progress
};

}   // namespace orvo::aikctl
