#include "sim/call/CallText.h"

#include <array>
#include <charconv>

namespace orvo::sim {

CallText& CallText::real(std::string_view name, double value)
{
    std::array<char, 32> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return word(name, std::string_view(digits.data(), static_cast<size_t>(end - digits.data())));
}

CallText& CallText::text(std::string_view name, const char* value)
{
    return word(name, quoted(value));
}

CallText& CallText::pointer(std::string_view name, const void* value)
{
    return word(name, value ? "set" : kNull);
}

CallText& CallText::word(std::string_view name, std::string_view value)
{
    if (!m_text.empty())
        m_text += ' ';
    (m_text += name) += '=';
    m_text += value;
    return *this;
}

CallText& CallText::result(std::string_view value)
{
    (m_text += " -> ") += value;
    return *this;
}

std::string CallText::quoted(const char* text)
{
    return text ? "\"" + std::string(text) + "\"" : kNull;
}

}   // namespace orvo::sim
