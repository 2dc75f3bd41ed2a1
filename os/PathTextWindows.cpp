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

}   // namespace orvo::os
