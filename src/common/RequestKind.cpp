#include "common/RequestKind.h"

#include <iterator>

namespace goodsreq {
namespace {

// clang-format off
constexpr RequestKind kKinds[] = {
    {1507, "r", " and srhtype ='r' order by sRHrequestID ",
     "Goods Request To Shop", "Goods Request To Shop", true, true, false,
     "SP", "\\reports\\reqtoshop.rpt", nullptr, "Goods Request To Shop"},
    {1611, "s", " and srhtype ='s' order by sRHrequestID",
     "Inter Division Sales Request", "Inter Division Sales Request", false, true, true,
     "WP", "\\reports\\rptinterdivisionsalesreq.rpt", "Inter Divison Sales Request  ", "Inter Divsion Sales Request"},
    {0, "", " and srhtype ='r' order by sRHrequestID ",
     "Goods Request To Shop", "Inter Division Sales Request", true, false, false,
     "SP", "\\reports\\reqtoshop.rpt", nullptr, "Goods Request To Shop"},
};
// clang-format on

} // namespace

const RequestKind& requestKind(std::int32_t screenId) {
    const auto* kind = std::begin(kKinds);
    while (kind->screenId != screenId && kind->screenId != 0) ++kind; // the last row stands for any other
    return *kind;
}

} // namespace goodsreq
