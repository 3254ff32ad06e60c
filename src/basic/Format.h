// Values as text after a pattern, for numbers and for dates.
#pragma once

#include "automation/Value.h"
#include "basic/Locale.h"

#include <string>
#include <string_view>

namespace basic {

/// A pattern with "#" or "0" is for numbers, made of "#", "0", "," (thousands are grouped) and "."; any other is for
/// dates, made of d dd, m mm mmm mmmm (minutes right after hours), yy yyyy, h hh, n nn, s ss in any case, "quoted
/// text", "\" before a literal character, and characters that stand for themselves; "/" stays "/". An empty pattern is
/// cStr.
///
/// Numbers round halves away from zero, doubles on their decimal text of 15 significant digits; decimals, currency and
/// text that is a number keep every digit. What rounds to zero has no minus sign. The decimal sign is always ".".
/// Text that is no number comes back unchanged under a number pattern; Null and Empty give "".
///
/// Errors: 13 text that is no date under a date pattern, 5 a pattern with something else in it.
std::string format(const automation::Value& value, std::string_view pattern);
/// `locale` is how text is read as a date.
std::string format(const automation::Value& value, std::string_view pattern, const Locale& locale);

} // namespace basic
