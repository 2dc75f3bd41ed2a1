#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace orvo::aikctl {

/// Names and texts come from boards: bytes that are no UTF-8 are replaced, not refused.
inline std::string toJsonText(const nlohmann::ordered_json& value)
{
    return value.dump(4, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}   // namespace orvo::aikctl
