#include "sim/brdlib5/Symbols.h"

#include <variant>

#include "sim/brdlib5/BrdError.h"
#include "sim/brdlib5/Library.h"
#include "sim/call/CallText.h"

namespace orvo::sim {

namespace {

/// `find` makes the symbol, or throws BrdError for what isn't known.
template <typename Find>
std::string symbol(const void* address, Find find)
{
    if (!address)
        return CallText::kNull;
    try {
        return find();
    } catch (const BrdError&) {
        return CallText::kUnknown;
    }
}

}   // namespace

std::string boardSymbol(const void* handle)
{
    return symbol(handle, [&] { return std::to_string(Library::instance().board(handle)->index()); });
}

std::string headSymbol(const void* board, const void* head)
{
    return symbol(
        head, [&] { return "h" + std::to_string(Library::instance().board(board)->head(head)->symbol()); });
}

std::string blockSymbol(const void* board, const void* head, const void* block)
{
    return symbol(block, [&] {
        const auto index = Library::instance().board(board)->head(head)->indexOf(block);
        return index ? "b" + std::to_string(*index) : CallText::kUnknown;
    });
}

std::string valueSymbol(const Value& value)
{
    const std::string text = textOf(value);
    return std::holds_alternative<std::string>(value) ? CallText::quoted(text.c_str()) : text;
}

}   // namespace orvo::sim
