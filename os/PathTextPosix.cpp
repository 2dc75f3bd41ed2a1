#include "os/PathText.h"

namespace orvo::os {

std::filesystem::path pathOf(const std::string& text)
{
    return text;
}

std::string textOf(const std::filesystem::path& path)
{
    return path.native();
}

}   // namespace orvo::os
