#include "sim/call/CallText.h"

#include <array>
#include <charconv>

namespace orvo::sim {

void CallText::add(std::string_view name, double value)
{
    std::array<char, 32> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    addWord(name, std::string_view(digits.data(), static_cast<size_t>(end - digits.data())));
}

void CallText::add(std::string_view name, const char* text)
{
    addWord(name, quoted(text));
}

void CallText::addWord(std::string_view name, std::string_view word)
{
    if (!m_text.empty())
        m_text += ' ';
    (m_text += name) += '=';
    m_text += word;
}

void CallText::addResult(std::string_view result)
{
    (m_text += " -> ") += result;
}

std::string CallText::quoted(const char* text)
{
    return text ? "\"" + std::string(text) + "\"" : kNull;
}

}   // namespace orvo::sim
