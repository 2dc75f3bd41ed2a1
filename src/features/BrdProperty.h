#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace orvo::cognex {

/// What the board library keeps of each parameter, by the numbers that it publishes.
enum class BrdProperty : int32_t {
    Value = 0,
    Type = 1,
    Text = 3,
    EnumerationSize = 13,   // in bytes; above 0 only for an enumeration
    Enumeration = 14,       // the entries: a run of bytes, no text
};

/// A property that is a text. `status` is the library's answer; the text of a refused call is empty.
struct BrdPropertyText {
    int32_t status = 0;
    std::string text;
};

/// Asks the board library for a property in at most `size` bytes, its NUL included. `boardHandle` is that of
/// a loaded applet.
BrdPropertyText brdProperty(void* boardHandle, int32_t parameterId, BrdProperty property, size_t size);

/// Whether the parameter is an enumeration. One whose size the library doesn't tell is none; a size that is
/// no number throws as parseInt() does.
bool isEnumeration(void* boardHandle, int32_t parameterId);

/// The parameter's own text. Throws AIKException "brd error code: N".
std::string parameterText(void* boardHandle, int32_t parameterId);

}   // namespace orvo::cognex
