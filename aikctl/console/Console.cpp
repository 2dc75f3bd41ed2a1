#include "aikctl/console/Console.h"

#include <ostream>
#include <utility>

#include "aikctl/console/Text.h"
#include "os/Program.h"

namespace orvo::aikctl {

namespace {

void makeReadable(nlohmann::ordered_json& value)
{
    if (value.is_string())
        value = readable(value.get_ref<const std::string&>());
    else if (value.is_structured())
        for (auto& element : value)
            makeReadable(element);
}

}   // namespace

Console::Console(std::ostream& out, std::ostream& err, Terminals terminals, std::function<bool()> interrupted)
    : m_out(&out), m_err(err), m_terminals(terminals), m_interrupted(std::move(interrupted))
{}

std::ostream& Console::takeOutForData()
{
    os::makeStandardOutputBinary();
    return *std::exchange(m_out, &m_err);
}

void Console::printJson(nlohmann::ordered_json head, ExitStatus status)
{
    head.update(m_result);
    head.update({{"notes", m_notes}, {"failures", m_failures}, {"exitCode", static_cast<int>(status)}});
    makeReadable(head);
    out() << head.dump(4, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << std::endl;
}

void Console::note(const std::string& text)
{
    m_notes.push_back(text);
    say(text);
}

void Console::fail(const std::string& text)
{
    m_failures.push_back(text);
    say(text);
}

void Console::say(const std::string& text)
{
    progress("");
    m_err << "aikctl: " + readable(text) + "\n" << std::flush;   // in one write, should it be unbuffered
}

void Console::progress(const std::string& text)
{
    if (text.empty() && m_shown == 0)
        return;
    if (text.size() < m_shown)
        m_err << '\r' << std::string(m_shown, ' ');
    m_err << '\r' << text << std::flush;
    m_shown = text.size();
}

}   // namespace orvo::aikctl
