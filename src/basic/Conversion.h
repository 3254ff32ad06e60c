// Conversions between the kinds of values, by the rules of the language that the module's users know.
#pragma once

#include "automation/Value.h"
#include "basic/Locale.h"

#include <cstdint>
#include <string>

namespace basic {

// All take references (they convert what is referred to) and objects (they convert the default member; error 91 when
// the variable holds none). Null gives error 94, an array or a missing argument 13, Empty counts as 0, "" or False.
// Numbers are read and written with "." as decimal sign whatever the locale says, since the module splices them into
// statements and reads them back.

/// The value itself, freed of references and objects. Null and Empty stay; errors 13 and 91 as above.
automation::Value plainValue(const automation::Value& value);

/// Halves go to the even neighbour, exactly: text, decimals and currency are not taken through a double.
/// Errors: 6 out of range, 13 text that is no number.
std::int16_t cInt(const automation::Value& value);
std::int32_t cLng(const automation::Value& value);
/// Errors: 6 out of range, 13 text that is no number.
double cDbl(const automation::Value& value);
/// Any number but 0 is true. Text is "True" or "False" in any case or a number, else error 13.
bool cBool(const automation::Value& value);

/// A date is the locale's short date, with " HH:MM:SS" when it has a time of day; a time without a day is only the
/// time. Doubles are as `numberText` writes them; decimals and currency keep all their digits.
std::string cStr(const automation::Value& value, const Locale& locale = {});
/// What joining to text gives: as cStr, but Null gives "".
std::string concatText(const automation::Value& value, const Locale& locale = {});

/// Reads day, month and year in the locale's order, or year first when that has four digits; the month may be an
/// English name. A time "HH:MM[:SS] [AM|PM]" may follow or stand alone. Two-digit years go up to the locale's last one.
/// A number is taken as days. Errors: 13 text that is no date, 6 a number out of the years 100 to 9999.
automation::Date cDate(const automation::Value& value, const Locale& locale = {});

} // namespace basic
