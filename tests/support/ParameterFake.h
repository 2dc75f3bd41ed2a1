#pragma once

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "tests/support/BoardLibraryFake.h"

namespace orvo::test {

using Lines = std::vector<std::string>;

/// An applet with one parameter, number 7. Journals each call in a line.
class ParameterFake : public BoardLibraryFake {
public:
    static constexpr int32_t kId = 7;

    std::map<int32_t, std::string> properties;   // what the library delivers for each, NULs included
    std::map<int32_t, int32_t> refused;          // the library's answer where it isn't 0, by property
    int32_t writeAnswer = 0;
    int32_t idAnswer = kId;
    const char* description = "out of order";
    bool holdsText = false;
    Lines journal;

    const char* Brd_getLastErrorDescription(void* board) override;
    int32_t Brd_getParameterIdByName(void* board, const char* name) override;
    int32_t Brd_getParameterProperty(void* board, int32_t id, int32_t property, void* buffer,
                                     int32_t* length) override;
    int32_t Brd_getParameterPropertyEx(void* board, int32_t id, int32_t property, uint32_t dma, void* buffer,
                                       int32_t* length) override;
    int32_t Brd_setParameter(void* board, int32_t id, const void* value, uint32_t dma) override;
    int32_t Brd_setParameterWithType(void* board, int32_t id, const void* value, uint32_t dma,
                                     int32_t type) override;

private:
    int32_t deliver(int32_t property, void* buffer, int32_t* length);
};

/// A text as the library delivers it: with its NUL.
inline std::string delivered(std::string text)
{
    text.push_back('\0');
    return text;
}

}   // namespace orvo::test
