// Text on its way over the edge: UTF-8 inside, UTF-16 outside.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>
#include <utility>

namespace com {

/// What is no valid text becomes U+FFFD, in either direction.
std::wstring toWide(std::string_view utf8);
std::string toUtf8(std::wstring_view wide);
/// The text of a BSTR with all its characters, also zeros. No BSTR is the empty text.
std::string toUtf8(BSTR text);

/// Owns a BSTR.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view wide);
    explicit Bstr(std::string_view utf8) : Bstr(std::wstring_view(toWide(utf8))) {}
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    ~Bstr() { SysFreeString(text_); }

    BSTR get() const { return text_; }
    BSTR* out() {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    BSTR detach() { return std::exchange(text_, nullptr); }
    std::string utf8() const { return toUtf8(text_); }

private:
    BSTR text_ = nullptr;
};

} // namespace com
