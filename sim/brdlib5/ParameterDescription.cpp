#include "sim/brdlib5/ParameterDescription.h"

#include <algorithm>

namespace orvo::sim {

bool ParameterDescription::takes(const Value& candidate) const
{
    // Asked for what holds, because nothing holds of what is no number.
    if ((least && !(candidate >= *least)) || (most && !(candidate <= *most)))
        return false;
    return entries.empty() || std::any_of(entries.begin(), entries.end(), [&](const ParameterEntry& entry) {
               return converted(int64_t{entry.value}, type) == candidate;
           });
}

}   // namespace orvo::sim
