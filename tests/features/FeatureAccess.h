#pragma once

#include <array>
#include <string>

namespace orvo::test {

/// A feature that may be read, written and executed.
template <typename Feature>
class Usable : public Feature {
public:
    Usable()
    {
        this->setReadable(true);
        this->setWriteable(true);
        this->setAvailable(true);
    }
};

/// What a host reads into its buffer, from a feature or, with a name, from a container.
template <typename Source, typename... Name>
std::string reading(Source& source, const Name&... name)
{
    std::array<char, 256 + 1> buffer{};
    buffer.back() = '#';
    source.read(name..., buffer.data());
    return buffer.back() == '#' ? buffer.data() : "written beyond the buffer";
}

}   // namespace orvo::test
