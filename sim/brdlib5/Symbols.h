#pragma once

#include <string>

#include "sim/brdlib5/Value.h"

namespace orvo::sim {

// What stands in the journal for handles and addresses of the board library, `?` for those that aren't known.
std::string boardSymbol(const void* handle);
std::string headSymbol(const void* board, const void* head);
std::string blockSymbol(const void* board, const void* head, const void* block);

/// A parameter's value; a text in double quotes.
std::string valueSymbol(const Value& value);

}   // namespace orvo::sim
