#include "sandbox/suite/ClsCommonGen.h"

#include "basic/Conversion.h"
#include "basic/Text.h"

#include <algorithm>

namespace sandbox {

using automation::Arguments;
using automation::Object;
using automation::Value;

namespace {

/// Chooses the first entry that `matches`; none where there is no such entry.
template <class Matches> void chooseEntry(Object& box, Matches matches) {
    const std::int32_t count = basic::cLng(box.get("ListCount"));
    std::int32_t index = 0;
    while (index < count && !matches(index)) ++index;
    box.put("ListIndex", index < count ? index : std::int32_t{-1});
}

void selectByValue(Object& box, std::int32_t value) {
    chooseEntry(box, [&](std::int32_t index) { return basic::cLng(box.call("ItemData", index)) == value; });
}

void selectByName(Object& box, const std::string& text) {
    chooseEntry(box, [&](std::int32_t index) { return basic::cStr(box.call("List", index)) == text; });
}

/// The key that is left of `character`: itself, or 0 where the box could not hold a number with it.
std::int16_t filteredKey(Object& box, std::int16_t character, int digits, int decimals) {
    const bool isControlKey = character >= 0 && character < ' ';
    if (isControlKey) return character;
    if (character < 0 || character > '9') return 0;
    const std::string text = basic::cStr(box.get("Text"));
    const int all = basic::len(text);
    const int start = std::clamp(static_cast<int>(basic::cLng(box.get("SelStart"))), 0, all);
    const int length = std::clamp(static_cast<int>(basic::cLng(box.get("SelLength"))), 0, all - start);
    const std::string result =
        basic::left(text, start) + static_cast<char>(character) + basic::mid(text, start + length + 1);
    return isNumberSoFar(result, digits, decimals) ? character : std::int16_t{0};
}

void textValidateNum(Arguments arguments) {
    Value& key = arguments[1].resolved();
    key = filteredKey(arguments[0].object(), basic::cInt(key), basic::cInt(arguments[2]), basic::cInt(arguments[3]));
}

} // namespace

bool isNumberSoFar(std::string_view text, int digits, int decimals) {
    if (text.starts_with('-')) text.remove_prefix(1);
    int seen = 0;
    int afterPoint = -1; ///< digits after the point; below 0 before it
    for (const char c : text) {
        if (c == '.') {
            if (afterPoint >= 0) return false;
            afterPoint = 0;
        } else if (c >= '0' && c <= '9') {
            ++seen;
            if (afterPoint >= 0) ++afterPoint;
        } else {
            return false;
        }
    }
    return seen <= digits && afterPoint <= decimals;
}

const automation::Members<ClsCommonGen>& ClsCommonGen::members() {
    static const auto table = [] {
        automation::Members<ClsCommonGen> m;
        m.method("SelectComboItemByValue", 2, 2, [](ClsCommonGen&, Arguments a) {
            selectByValue(a[0].object(), basic::cLng(a[1]));
            return Value();
        });
        m.method("SelectComboItemByname", 2, 2, [](ClsCommonGen&, Arguments a) {
            selectByName(a[0].object(), basic::cStr(a[1]));
            return Value();
        });
        m.method("TextValidateNum", 4, 4, [](ClsCommonGen&, Arguments a) {
            textValidateNum(a);
            return Value();
        });
        return m;
    }();
    return table;
}

} // namespace sandbox
