#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "aikctl/console/ExitStatus.h"

namespace orvo::aikctl {

/// What the two streams of a console reach.
struct Terminals {
    size_t outColumns = 0;        // characters in a line, where results go; 0 for no terminal
    bool isErrTerminal = false;   // where everything else goes
};

/// What a command writes: results to one stream, everything else to the other.
/// Threads: one.
class Console {
public:
    /// `interrupted` tells whether the user has asked the program to end. The streams outlive the console.
    Console(std::ostream& out, std::ostream& err, Terminals terminals, std::function<bool()> interrupted);

    /// For results as text, in UTF-8.
    std::ostream& out() { return *m_out; }
    /// How many characters a line of results can have; 0 for any number.
    size_t columns() const { return m_terminals.outColumns; }
    /// Gives standard output to the caller's data. From now on all results go where notes go.
    std::ostream& takeOutForData();
    /// Whether the stream for everything else reaches a terminal.
    bool isTerminal() const { return m_terminals.isErrTerminal; }
    bool interrupted() const { return m_interrupted(); }

    /// Adds the members of `result`, an object, to the one object that printJson() writes. Texts need not be
    /// UTF-8. Any number of calls; the last one to set a member wins.
    void print(const nlohmann::ordered_json& result) { m_result.update(result); }
    /// Writes the object: the members of `head`, the results, and how the command ended. Once, at the end.
    void printJson(nlohmann::ordered_json head, ExitStatus status);

    void note(const std::string& text);
    /// Says what failed; the program's exit code will tell that something did.
    void fail(const std::string& text);
    bool hasFailed() const { return !m_failures.empty(); }

    /// Replaces the progress shown so far with `text`; an empty one clears it.
    void progress(const std::string& text);

private:
    void say(const std::string& text);

    std::ostream* m_out;
    std::ostream& m_err;
    const Terminals m_terminals;
    const std::function<bool()> m_interrupted;
    nlohmann::ordered_json m_result = nlohmann::ordered_json::object();
    std::vector<std::string> m_notes;
    std::vector<std::string> m_failures;
    size_t m_shown = 0;   // characters of progress
};

}   // namespace orvo::aikctl
