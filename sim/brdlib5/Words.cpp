#include "sim/brdlib5/Words.h"

#include <variant>

#include "sim/brdlib5/BrdError.h"
#include "sim/brdlib5/Library.h"

namespace orvo::sim {

namespace {

constexpr const char* kUnknown = "?";
constexpr const char* kNull = "null";

/// `find` makes the symbol, or throws BrdError for what isn't known.
template <typename Find>
std::string symbol(const void* address, Find find)
{
    if (!address)
        return kNull;
    try {
        return find();
    } catch (const BrdError&) {
        return kUnknown;
    }
}

}   // namespace

Words& Words::text(std::string_view name, const char* value)
{
    return word(name, quoted(value));
}

Words& Words::pointer(std::string_view name, const void* value)
{
    return word(name, value ? "set" : kNull);
}

Words& Words::value(std::string_view name, const Value& value)
{
    const std::string text = textOf(value);
    return word(name, std::holds_alternative<std::string>(value) ? quoted(text.c_str()) : text);
}

Words& Words::word(std::string_view name, std::string_view value)
{
    if (!m_text.empty())
        m_text += ' ';
    (m_text += name) += '=';
    m_text += value;
    return *this;
}

Words& Words::result(std::string_view value)
{
    (m_text += " -> ") += value;
    return *this;
}

std::string Words::quoted(const char* text)
{
    return text ? "\"" + std::string(text) + "\"" : kNull;
}

std::string Words::boardSymbol(const void* handle)
{
    return symbol(handle, [&] { return std::to_string(Library::instance().board(handle)->index()); });
}

std::string Words::headSymbol(const void* board, const void* head)
{
    return symbol(
        head, [&] { return "h" + std::to_string(Library::instance().board(board)->head(head)->symbol()); });
}

std::string Words::blockSymbol(const void* board, const void* head, const void* block)
{
    return symbol(block, [&] {
        const auto index = Library::instance().board(board)->head(head)->indexOf(block);
        return index ? "b" + std::to_string(*index) : kUnknown;
    });
}

}   // namespace orvo::sim
