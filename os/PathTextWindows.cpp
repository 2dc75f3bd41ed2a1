#include "os/PathText.h"

#include <windows.h>

namespace orvo::os {

std::filesystem::path pathOf(const std::string& text)
{
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');   // no code page takes more units than bytes
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), size);
    wide.resize(static_cast<size_t>(length));
    return wide;
}

std::string textOf(const std::filesystem::path& path)
{
    const std::wstring& wide = path.native();
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
    return text;
}

// Wide, since Wine 8 cuts the narrow value at its wide length when the code page is UTF-8.
std::filesystem::path pathVariable(const std::string& name)
{
    const std::wstring wideName = pathOf(name).native();
    const DWORD size = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    std::wstring value(size, L'\0');
    value.resize(size ? GetEnvironmentVariableW(wideName.c_str(), value.data(), size) : 0);
    return value;
}

}   // namespace orvo::os
