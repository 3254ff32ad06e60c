#include "com/Bstr.h"

#include <algorithm>
#include <climits>
#include <new>

namespace com {
namespace {

/// Most texts are; they need no conversion by the system, which takes longer than all else that is done to a cell.
template <class Text> bool isAscii(const Text& text) {
    return std::all_of(text.begin(), text.end(), [](auto unit) { return (unit & ~0x7F) == 0; });
}

/// The system counts in 32 bits.
int counted(std::size_t units) {
    if (units > INT_MAX) throw std::bad_alloc();
    return static_cast<int>(units);
}

} // namespace

std::wstring toWide(std::string_view utf8) {
    if (isAscii(utf8)) return {utf8.begin(), utf8.end()};
    const int bytes = counted(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), length);
    return wide;
}

std::string toUtf8(std::wstring_view wide) {
    if (isAscii(wide)) return {wide.begin(), wide.end()};
    const int units = counted(wide.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

std::string toUtf8(BSTR text) { return toUtf8(std::wstring_view(text ? text : L"", SysStringLen(text))); }

Bstr::Bstr(std::wstring_view wide) : text_(SysAllocStringLen(wide.data(), static_cast<UINT>(counted(wide.size())))) {
    if (!text_) throw std::bad_alloc();
}

} // namespace com
