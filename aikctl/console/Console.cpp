#include "aikctl/console/Console.h"

#include <ostream>
#include <utility>

#include <nlohmann/json.hpp>

namespace orvo::aikctl {

Console::Console(std::ostream& out, std::ostream& err, bool isTerminal, std::function<bool()> interrupted)
    : m_out(out), m_err(err), m_isTerminal(isTerminal), m_interrupted(std::move(interrupted))
{}

void Console::print(const nlohmann::ordered_json& result)
{
    m_out << result.dump(4, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << std::endl;
}

void Console::note(const std::string& text)
{
    progress("");
    m_err << "aikctl: " << text << std::endl;
}

void Console::fail(const std::string& text)
{
    m_hasFailed = true;
    note(text);
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
