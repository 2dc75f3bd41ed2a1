#include "os/PathText.h"

#include "os/Os.h"

namespace orvo::os {

std::filesystem::path pathOf(const std::string& text)
{
    return text;
}

std::string textOf(const std::filesystem::path& path)
{
    return path.native();
}

std::filesystem::path pathVariable(const std::string& name)
{
    return environmentVariable(name);
}

}   // namespace orvo::os
