#include "com/Bstr.h"

#include <new>

namespace com {

std::wstring toWide(std::string_view utf8) {
    if (utf8.empty()) return {};
    const int bytes = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), length);
    return wide;
}

std::string toUtf8(std::wstring_view wide) {
    if (wide.empty()) return {};
    const int units = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

std::string toUtf8(BSTR text) { return toUtf8(std::wstring_view(text ? text : L"", SysStringLen(text))); }

Bstr::Bstr(std::wstring_view wide) : text_(SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()))) {
    if (!text_) throw std::bad_alloc();
}

} // namespace com
