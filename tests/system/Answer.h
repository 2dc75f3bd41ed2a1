#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "aik/aik.h"

namespace orvo::test {

/// What a call of the adapter gave: its return code, the acquisition status of an image function, and the
/// text of the failure or, for a call that hands out a text or a number, that.
struct Answer {
    int32_t code = AIK_OK;
    std::optional<uint32_t> acqResult;
    std::string text;

    bool operator==(const Answer&) const = default;
};

inline Answer done()
{
    return {};
}
inline Answer gives(const std::string& text)
{
    return {AIK_OK, std::nullopt, text};
}
inline Answer fails(const std::string& text)
{
    return {AIK_FAILED, std::nullopt, text};
}
/// How the failure of a feature reaches the host, unless it comes bare.
inline Answer cannotRead(const std::string& reason)
{
    return fails("Feature could not be read. (" + reason + ")");
}
inline Answer cannotWrite(const std::string& reason)
{
    return fails("Feature could not be written. (" + reason + ")");
}
inline Answer cannotExecute(const std::string& reason)
{
    return fails("Command could not be executed. (" + reason + ")");
}
inline const char* const kNotAvailable = "Feature is not available.";

inline Answer image()
{
    return {AIK_OK, AIK_ACQ_COMPLETED, ""};
}
inline Answer pending()
{
    return {AIK_OK, AIK_ACQ_PENDING, ""};
}
inline Answer imageFails(const std::string& text)
{
    return {AIK_FAILED, AIK_ACQ_FAILED, text};
}

inline std::ostream& operator<<(std::ostream& out, const Answer& answer)
{
    out << "code " << answer.code;
    if (answer.acqResult)
        out << ", acqResult " << *answer.acqResult;
    return out << ", text \"" << answer.text << "\"";
}

}   // namespace orvo::test
