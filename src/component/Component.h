// The module's entry for a host: the session's fields, and Show.
#pragma once

#include "common/Module.h"

#include <memory>

namespace goodsreq {

/// Makes the module's forms; for whoever runs a Module.
FormMakers formMakers();

/// What an object of clsGRtoShop holds. The host fills the fields in any order, then calls show().
class Component {
public:
    explicit Component(Module& module) : module_(module) {}

    automation::ObjectPtr adocon; ///< the host's open ADO connection
    std::string strProjectKey;
    std::string strMsgboxCaption;
    std::int16_t intCompanyID = 0;
    std::int16_t intUserID = 0;
    std::int16_t intShopid = 0;   ///< the shop that requests
    std::int32_t interfaceid = 0; ///< the host's menu entry; selects the kind of request and the rights
    automation::Date dtProcessDate;

    /// Hands the fields to the session and shows the register until it is closed. A wrong project key shows nothing,
    /// and says nothing. Error 400 when the register is open already; the session is left as it is then.
    void show();
    /// Whether the host has the right key.
    bool mayShow() const;

private:
    Module& module_;
};

/// The one module of the process, which lives as long as the process does. `install` comes first, once.
Module& processModule();
void installProcessModule(std::unique_ptr<forms::Desktop> desktop, std::unique_ptr<System> system,
                          automation::ObjectFactory factory, std::string folder);

} // namespace goodsreq
