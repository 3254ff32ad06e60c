// The site's stored layout of the editor's list.
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace {

using editor::CompanyFile;
using editor::Till;

struct Layout {
    const char* name;
    const char* header;  ///< a row of alistviewheader: screen, list, module
    int width;           ///< that the third column then has, in twips
    forms::ColumnAlignment alignment;
};

constexpr int kDesigned = 4700;

TEST(StoredLayout, IsFoundByItsThreeNamesInAnyCaseAndWithBlanksAround) {
    for (const Layout& layout : {
             Layout{"as written", "'frmRequest','lvwrequest','Shoptoshoptransfer'", 2345, forms::ColumnAlignment::centre},
             {"other case", "'FRMREQUEST','LvwRequest','SHOPTOSHOPTRANSFER'", 2345, forms::ColumnAlignment::centre},
             {"blanks around", "'  frmRequest','lvwrequest  ',' Shoptoshoptransfer '", 2345, forms::ColumnAlignment::centre},
             {"another screen's", "'frmOther','lvwrequest','Shoptoshoptransfer'", kDesigned, forms::ColumnAlignment::left},
             {"another module's", "'frmRequest','lvwrequest','Transfer'", kDesigned, forms::ColumnAlignment::left},
         }) {
        SCOPED_TRACE(layout.name);
        const CompanyFile company;
        company.change("delete alistviewdetails; delete alistviewheader;"
                       " insert into alistviewheader (lvwid,lvwtransname,lvwname,lvwmodulename) values (7," +
                       std::string(layout.header) +
                       "); insert into alistviewdetails (lvwdid,lvwcolid,lvwdcolwidth,lvwdcolalign) values (7,3,2345,2)");
        Till till(company);
        till.newRequest();
        const forms::ListColumn column = till.user.control<forms::ListView>("lvwrequest")->columns().at(2);
        EXPECT_EQ(column.width, layout.width);
        EXPECT_EQ(column.alignment, layout.alignment);
        EXPECT_EQ(till.errors(), std::vector<std::string>{});
    }
}

// A column that the list does not have: one report, and the columns before it have their layout.
TEST(StoredLayout, WithAColumnTooManyIsReportedOnce) {
    const CompanyFile company;
    company.change("delete alistviewdetails; insert into alistviewdetails (lvwdid,lvwcolid,lvwdcolwidth,lvwdcolalign)"
                   " values (1,2,1111,0); insert into alistviewdetails (lvwdid,lvwcolid,lvwdcolwidth,lvwdcolalign)"
                   " values (1,12,999,0)");
    Till till(company);
    till.opensRegister();
    till.user.clicks("cmdnew");
    till.readsReport();
    EXPECT_EQ(till.user.form(), "frmRequest");
    EXPECT_EQ(till.user.control<forms::ListView>("lvwrequest")->columns().at(1).width, 1111);
}

} // namespace
