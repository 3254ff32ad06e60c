#include "tests/editor/Till.h"

#include "screens/request/frmRequest.h"

namespace editor {

Till& Till::newRequest(int supplier) {
    if (user.form() != "frmMaster") opens();
    user.clicks("cmdnew");
    EXPECT_EQ(user.form(), "frmRequest");
    if (supplier != 0) picksShop(supplier);
    return *this;
}

Till& Till::editRequest(const std::string& id) {
    opens();
    const auto rows = user.rows("flexMaster");
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row[0] == id; });
    EXPECT_NE(found, rows.end()) << "The register does not show request " << id;
    user.selectsRow("flexMaster", static_cast<int>(found - rows.begin()) + 1).clicks("CmdEdit");
    return *this;
}

Till& Till::addsLines() {
    user.focuses("lvwrequest").types("\n");
    EXPECT_EQ(user.form(), "frmRequestDetail");
    return *this;
}

Till& Till::changesLine(int line) {
    user.selectsRow("lvwrequest", line).types("\r");
    EXPECT_EQ(user.form(), "frmRequestDetail");
    return *this;
}

Till& Till::scans(const std::string& code) {
    user.enters("txtBarcode", code + "\r");
    return *this;
}

Till& Till::line(const SampleItem& item, const std::string& quantity) {
    scans(item.barcode).user.enters("txtQuantity", quantity).clicks("cmdOk");
    return *this;
}

Till& Till::enters(const Items& items) {
    addsLines();
    for (std::size_t i = 0; i < items.size(); ++i) line(items[i], std::to_string(i + 1));
    backToEditor();
    EXPECT_EQ(lines().count(), static_cast<int>(items.size()));
    return *this;
}

Till& Till::backToEditor() {
    user.clicks("cmdCancel");
    EXPECT_EQ(user.form(), "frmRequest");
    return *this;
}

Till& Till::saves() {
    user.clicks("cmdOk");
    EXPECT_EQ(user.form(), "frmMaster");
    return *this;
}

Till& Till::oksAndReads(const std::string& message) {
    user.clicks("cmdOk").answers(message, Answer::ok);
    return *this;
}

Till& Till::isAsked(const std::string& question, Answer byDefault, Answer answer) {
    const auto box = user.message();
    EXPECT_TRUE(box && box->icon == forms::MessageIcon::question && box->title == "Retail Back Office");
    EXPECT_TRUE(box && box->defaultAnswer == byDefault) << "what Enter answers";
    user.answers(question, answer);
    return *this;
}

Till& Till::readsReport(const std::string& part) {
    const auto box = user.message();
    EXPECT_TRUE(box && box->icon == forms::MessageIcon::critical && box->text.find(part) != box->text.npos)
        << "Not reported is " << part << (box ? ", but: " + box->text : std::string());
    if (box) user.answers(Answer::ok);
    EXPECT_FALSE(user.message()) << "A second box follows";
    return *this;
}

Till& Till::puts(const std::string& box, const std::string& text) {
    user.happens([&] { user.control<forms::TextBox>(box)->setText(text); });
    return *this;
}

Till& Till::putsCell(int line, int column, const std::string& text) {
    user.happens([&] { lines().item(line).setSubItem(column, text); });
    return *this;
}

void Till::watches(std::function<void(std::string_view)> look) {
    connection->failOn([look = std::move(look)](std::string_view statement) {
        look(statement);
        return false;
    });
}

forms::ListView& Till::lines() { return module.request().lvwrequest; }

Names Till::texts(std::initializer_list<const char*> controls) const {
    Names texts;
    for (const char* control : controls) texts.push_back(user.text(control));
    return texts;
}

Names Till::said() const {
    Names texts;
    for (const forms::Message& box : desktop.messages) texts.push_back(box.text);
    return texts;
}

std::string newest(const CompanyFile& company, const std::string& field) {
    return company.value("select " + field +
                         " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid ="
                         " (select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = 1)");
}

void storeRequest(const CompanyFile& company, const Items& items, const std::string& changes) {
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
