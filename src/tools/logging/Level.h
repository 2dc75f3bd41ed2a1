#pragma once

#include <cstdint>

namespace orvo::tools::logging {

// The levels of the logging dispatcher: a higher number is more severe. These are in use.
inline constexpr int32_t kTrace = 1;       // the steps of a call
inline constexpr int32_t kTolerated = 4;   // a failure that the code goes on from
inline constexpr int32_t kCaught = 5;      // a caught failure
inline constexpr int32_t kOff = 7;         // the threshold that no record in use reaches

}   // namespace orvo::tools::logging
