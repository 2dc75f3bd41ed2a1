#include "sim/brdlib5/BoardCall.h"

#include <variant>

#include "sim/brdlib5/Library.h"

namespace orvo::sim {

namespace {

/// `find` makes the symbol, or throws BrdError for what isn't known.
template <typename Find>
std::string symbolOf(const void* address, Find find)
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
    return symbolOf(handle, [&] { return std::to_string(Library::instance().board(handle)->index()); });
}

std::string headSymbol(const void* board, const void* head)
{
    return symbolOf(
        head, [&] { return "h" + std::to_string(Library::instance().board(board)->head(head)->symbol()); });
}

std::string blockSymbol(const void* board, const void* head, const void* block)
{
    return symbolOf(block, [&] {
        const auto index = Library::instance().board(board)->head(head)->indexOf(block);
        return index ? "b" + std::to_string(*index) : CallText::kUnknown;
    });
}

std::string valueSymbol(const Value& value)
{
    const std::string text = textOf(value);
    return std::holds_alternative<std::string>(value) ? CallText::quoted(text.c_str()) : text;
}

int32_t BoardFailure::numberOf(const std::exception& error) const
{
    const auto* const known = dynamic_cast<const BrdError*>(&error);
    const int32_t number = known ? known->code() : kInternalFault;
    Library::instance().setLastError(board, number, error.what());
    return number;
}

void BoardFailure::refuse(int32_t number)
{
    throw BrdError(static_cast<BrdCode>(number), "The script wants this call to fail");
}

}   // namespace orvo::sim
