#pragma once

#include <functional>
#include <iosfwd>
#include <string>

namespace orvo::aikctl {

/// Where a command speaks to whoever runs it: results to one stream, all else to the other. One thread.
class Console {
public:
    /// `interrupted` tells whether that person asked the program to end.
    Console(std::ostream& out, std::ostream& err, bool isTerminal, std::function<bool()> interrupted);

    std::ostream& out() { return m_out; }
    /// Whether the other stream reaches a terminal.
    bool isTerminal() const { return m_isTerminal; }
    bool interrupted() const { return m_interrupted(); }

    void note(const std::string& text);
    /// Says what failed; the program will end with a failure.
    void fail(const std::string& text);
    bool hasFailed() const { return m_hasFailed; }

    /// Writes `text` over the progress that was shown before; empty clears it.
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
