#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace editor {

void Till::opensRegister() {
    opens();
    ASSERT_EQ(user.form(), "frmMaster");
}

void Till::newRequest(int supplier) {
    opensRegister();
    user.clicks("cmdnew");
    ASSERT_EQ(user.form(), "frmRequest");
    if (supplier != 0) picksShop(supplier);
}

void Till::editRequest(const std::string& id) {
    opensRegister();
    const auto rows = user.grid("flexMaster");
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row][0] != id) continue;
        user.selectsRow("flexMaster", static_cast<int>(row) + 1);
        return user.clicks("CmdEdit");
    }
    FAIL() << "The register does not show request " << id;
}

void Till::addsLines() {
    user.focuses("lvwrequest");
    user.types("\n");
    ASSERT_EQ(user.form(), "frmRequestDetail");
}

void Till::changesLine(int line) {
    user.selectsRow("lvwrequest", line);
    user.types("\r");
    ASSERT_EQ(user.form(), "frmRequestDetail");
}

void Till::line(const SampleItem& item, const std::string& quantity) {
    user.enters("txtBarcode", item.barcode + "\r");
    user.enters("txtQuantity", quantity);
    user.clicks("cmdOk");
}

void Till::enters(const std::vector<SampleItem>& items) {
    addsLines();
    for (std::size_t i = 0; i < items.size(); ++i) line(items[i], std::to_string(i + 1));
    user.clicks("cmdCancel");
    ASSERT_EQ(user.form(), "frmRequest");
    ASSERT_EQ(user.list("lvwrequest").size(), items.size());
}

std::string Till::readsReport() {
    const auto box = user.message();
    if (!box || box->icon != forms::MessageIcon::critical) {
        ADD_FAILURE() << "No error is reported" << (box ? ", but: " + box->text : std::string());
        return {};
    }
    user.answers(Answer::ok);
    EXPECT_FALSE(user.message()) << "A second box follows";
    return box->text;
}

std::vector<std::string> Till::column(int index) const {
    std::vector<std::string> texts;
    for (const auto& line : user.list("lvwrequest")) texts.push_back(line[static_cast<std::size_t>(index)]);
    return texts;
}

std::vector<std::string> Till::said() const {
    std::vector<std::string> texts;
    for (const forms::Message& box : desktop.messages) texts.push_back(box.text);
    return texts;
}

void storeRequest(const CompanyFile& company, const std::vector<SampleItem>& items, const std::string& changes) {
    std::string script =
        "insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhrequestdate,SRHrequestTime,"
        "srhtoShopid,SRHremarks,srhrecaddUser,srhTransfinished,srhNoofDetails,srhtype) values "
        "(900,1,'GR/900','20260330','20260330 09:15:00',2,'as agreed','Owen Pryce',0,3,'r')";
    const char* const quantities[] = {"4", "5.5", "6"};
    for (std::size_t i = 0; i < 3; ++i)
        script +=
            ";insert into mesRequesttoShopDetail values (900,1," + items[i].id + ",2," + quantities[i] + ",0.5,0)";
    company.change(script + (changes.empty() ? "" : ";" + changes));
}

} // namespace editor
