// What every form of the module has: the module, its session, and traps under its own name.
#pragma once

#include "common/Module.h"
#include "common/basGRtoShop.h"
#include "forms/Form.h"
#include "forms/TextBox.h"

namespace goodsreq {

class ModuleForm : public forms::Form {
protected:
    ModuleForm(Module& module, std::string name) : forms::Form(module.desktop(), std::move(name)), module_(module) {}

    Module& module() const { return module_; }
    Session& session() const { return module_.session; }
    /// Runs a handler's body; its errors are reported under the form's name and the routine's.
    bool trap(const std::string& routine, const std::function<void()>& body) const {
        return goodsreq::trap(module_, name() + " ", routine, body);
    }
    /// Whether a flag of the database is set; one that is null or missing is not.
    static bool isTrue(const automation::Value& flag);
    /// Whether a flag is there and not set; one that is null or missing is neither true nor false.
    static bool isFalse(const automation::Value& flag);
    /// Keeps apostrophes out of a box whose text goes into statements, whichever way it comes in.
    static void keepApostrophesOut(forms::TextBox& box);
    /// Takes the locale's decimal sign as ".", and no blanks and line ends around it, whichever way a number comes into
    /// the box.
    void keepNumberPlain(forms::TextBox& box) const;
    std::string plainNumber(std::string text) const;
    /// Text of a value as the user reads it.
    std::string shown(const automation::Value& value) const;
    /// A focus handler for a box that is typed over when one comes to it.
    std::function<void()> selectsItsText() const {
        return [this] { desktop().sendKeys("{Home}+{End}"); };
    }
    /// A key-press handler for a box in which Enter moves on.
    std::function<void(std::int16_t&)> enterMovesOn() const {
        return [this](std::int16_t& character) { EnterToTab(module_, character); };
    }

private:
    Module& module_;
};

} // namespace goodsreq
