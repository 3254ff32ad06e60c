// The kinds of request: what each of the host's menu entries shows, stores and prints.
#pragma once

#include <cstdint>

namespace goodsreq {

struct RequestKind {
    std::int32_t screenId; ///< the host's menu entry; 0 in the row that stands for any other one
    const char* type;      ///< stored with each request; empty where the editor stores none
    const char* listed;    ///< end of the register's query: which requests it shows, and their order
    const char* registerCaption;
    const char* editorCaption;
    bool namesTheShop;       ///< captions of register and line entry end in the site's own word for a shop
    bool hidesPriceColumn;   ///< of the editor's list, until a stored layout says otherwise
    bool priced;             ///< line entry shows a price, and the lines are stored with it
    const char* priceColumn; ///< of what the price procedure answers
    const char* report;      ///< file, from the component's folder on
    const char* reportTitle; ///< null: the shop's name makes it. A report with a title of its own names the currency.
    const char* previewTitle;
};

const RequestKind& requestKind(std::int32_t screenId);

} // namespace goodsreq
