// A small dialog over line entry that takes one scanned or typed code.
#pragma once

#include "common/ModuleForm.h"
#include "common/SuiteServices.h"
#include "forms/Buttons.h"
#include "forms/TextBox.h"

#include <optional>

namespace goodsreq {

class frmscanBc : public ModuleForm {
public:
    explicit frmscanBc(Module& module);

    forms::Label lblBarcode{*this, "lblBarcode"};
    forms::TextBox txtBarcode{*this, "txtBarcode"};
    forms::CommandButton CmdClose{*this, "CmdClose"};

    /// Makes an item the choice of line entry, its packings listed, and returns its id. With item id 0 the id is looked
    /// up from the packing barcode; 0 where there is none. Whether both shops carry the item is not asked here. A
    /// line that stands keeps its item.
    std::int32_t DisplayBarcodeItemDetails(const std::string& strBarcode, std::int32_t lngItemid = 0);

private:
    void design() override;
    void onLoad() override;
    void onUnload() override { forget(); }
    void forget();

    void resolve();
    /// The item of a query's first row.
    std::optional<std::int32_t> itemOf(const std::string& query) const;
    void finish(const std::string& code, std::int32_t itemId);
    void refuse();

    CommonDb db_;
    CommonGen gen_;
};

} // namespace goodsreq
