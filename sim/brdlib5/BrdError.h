#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace orvo::sim {

/// The library's error numbers. A parameter that the applet lacks is -2070 for callers that have a fallback;
/// the others matter by their sign alone.
enum BrdCode : int32_t {
    kInternalFault = -2001,   // of the simulator: out of memory, no more threads
    kNullArgument = -2002,
    kWrongArgument = -2003,
    kUnknownCode = -2004,   // of a system information, property, status, selector or mode
    kBufferTooSmall = -2005,
    kNoBoard = -2010,   // at that index
    kUnknownHandle = -2011,
    kBoardInUse = -2012,
    kBadBoardsFile = -2013,
    kBadApplet = -2014,
    kUnknownDma = -2020,
    kUnknownProcess = -2021,
    kUnknownHead = -2030,
    kUnknownBlock = -2031,
    kUnknownPicture = -2032,
    kTooLarge = -2033,
    kHeadInUse = -2034,
    kAlreadyRunning = -2040,
    kUnknownParameter = -2070,
    kReadOnly = -2071,
    kOutOfRange = -2072,
    kWrongType = -2073,
};

/// A call that fails: what it returns, and the text that Brd_getLastErrorDescription has for it.
class BrdError : public std::runtime_error {
public:
    BrdError(BrdCode code, const std::string& text) : std::runtime_error(text), m_code(code) {}
    BrdCode code() const { return m_code; }

private:
    BrdCode m_code;
};

}   // namespace orvo::sim
