#include "common/basGRtoShop.h"

#include "automation/RunTimeError.h"
#include "basic/Apostrophes.h"
#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"

#include <algorithm>
#include <cmath>

namespace goodsreq {

using automation::RunTimeError;
using automation::Value;

namespace {

std::string key(const std::string& name) { return basic::ucase(basic::trim(name)); }

} // namespace

void LoadListViewLayout(Module& module, const std::string& screenName, forms::ListView& list,
                        const std::string& moduleName) {
    trap(module, kSharedModule, "LoadListViewLayout", [&] {
        Recordset layout = module.openRecordset(
            "select * from alistviewdetails where lvwdid=(select lvwid from alistviewheader where  "
            " ltrim(rtrim(upper(lvwtransname)))=" +
            quoted(key(screenName)) + " and ltrim(rtrim(upper(lvwname)))=" + quoted(key(list.name())) +
            " and ltrim(rtrim(upper(lvwmodulename)))=" + quoted(key(moduleName)) + ")");
        if (!layout.eof()) {
            const Field column = layout.field("lvwcolid");
            const Field width = layout.field("lvwdcolwidth");
            const Field alignment = layout.field("lvwdcolalign");
            for (; !layout.eof(); layout.moveNext()) {
                const int index = basic::cLng(std::trunc(basic::val(basic::concatText(column.value()))));
                list.setColumnWidth(index, basic::cLng(width.value()));
                list.setColumnAlignment(index, basic::cInt(alignment.value()));
            }
        }
        layout.close();
    });
}

bool UpdateEditedRow(Module& module, forms::Grid& grid, const std::string& listQuery, const std::string& condition) {
    bool shown = false;
    trap(module, kSharedModule, "UpdateEditedRow", [&] {
        std::string query = listQuery;
        if (const auto order = query.find("order by"); order != std::string::npos) query.erase(order);
        query += query.find("where") != std::string::npos ? " and " : " where ";
        Recordset record = module.openRecordset(query + condition);
        if (record.eof()) {
            record.close();
            return;
        }
        const std::vector<Field> fields = record.fields();
        // A register whose list could not be read has no columns yet.
        grid.setCols(std::max(grid.cols(), static_cast<int>(fields.size())));
        int row = grid.row();
        if (module.session.editMode != "E") {
            const bool isEmpty = grid.rows() == 2 && grid.cell(1, 0).empty();
            if (!isEmpty) grid.addItem(basic::concatText(fields.at(0).value()) + "\t");
            row = grid.rows() - 1;
        }
        for (std::size_t col = 0; col < fields.size(); ++col)
            grid.setCell(row, static_cast<int>(col),
                         basic::trim(basic::concatText(fields[col].value(), module.desktop().locale())));
        grid.selectRow(row);
        shown = true;
        record.close();
    });
    return shown;
}

void ReportError(Module& module, const std::string& moduleName, const std::string& routine, long number,
                 const std::string& source, const std::string& description) {
    const Session& session = module.session;
    automation::ObjectPtr errorDetails;
    std::string userName;
    try {
        errorDetails = module.create("ErrorHandler.ErrorDetails");
        CommonDb db(module.create("CommonModule.clscommondb"), session.connection);
        userName = basic::concatText(db.lookUp("LOUSERS where userid=" + std::to_string(session.userId) +
                                                   " and shopid = " + std::to_string(session.shopId),
                                               "username"));
    } catch (...) {
        // The error to report may be the very one that keeps the name from being read.
    }
    try {
        if (!errorDetails) automation::raise(automation::kCannotCreateObject);
        errorDetails->call("ErrorTrack", moduleName, userName, routine, static_cast<std::int32_t>(number), source,
                           description, session.editMode, true);
        return;
    } catch (...) {
        // The box below tells the user what the component could not.
    }
    try {
        module.ask({"This could not be done. Try it again; if it fails again, tell support what stands here:\r\n"
                    "Error " +
                        std::to_string(number) + " in " + source + "\r\n" + description,
                    session.messageBoxCaption, forms::MessageIcon::critical, forms::MessageButtons::ok,
                    forms::Answer::ok});
    } catch (...) {
        // Nothing is left to report with.
    }
}

bool trap(Module& module, const std::string& moduleName, const std::string& routine,
          const std::function<void()>& body) {
    try {
        body();
        return true;
    } catch (const RunTimeError& error) {
        ReportError(module, moduleName, routine, error.number(), error.source(), error.description());
    } catch (const std::bad_alloc&) {
        ReportError(module, moduleName, routine, 7, "goodsreq", "Out of memory");
    } catch (const std::exception& error) {
        ReportError(module, moduleName, routine, automation::kInvalidCall, "goodsreq", error.what());
    } catch (...) {
        ReportError(module, moduleName, routine, automation::kInvalidCall, "goodsreq", "Unknown error");
    }
    return false;
}

void EnterToTab(Module& module, std::int16_t character) {
    if (character == forms::kKeyReturn) module.desktop().sendKeys("{TAB}");
}

std::string idText(const Value& id) { return std::to_string(basic::cLng(id)); }

std::string quoted(std::string_view text) { return "'" + basic::replaceApostrophes(text, "''") + "'"; }

} // namespace goodsreq
