#pragma once

#include <string>
#include <utility>

#include "os/Os.h"
#include "os/Program.h"

namespace orvo::test {

/// Sets an environment variable for a scope; an empty value removes it.
class ScopedVariable {
public:
    ScopedVariable(std::string name, const std::string& value)
        : m_name(std::move(name)), m_before(os::environmentVariable(m_name))
    {
        os::setEnvironmentVariable(m_name, value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { os::setEnvironmentVariable(m_name, m_before); }

private:
    std::string m_name;
    std::string m_before;
};

}   // namespace orvo::test
