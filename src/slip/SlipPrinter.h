// Prints one request as a text slip, to the slip file or to the shop's printer.
#pragma once

#include "common/Module.h"
#include "slip/SlipPages.h"

#include <functional>
#include <memory>
#include <string>

namespace goodsreq {

/// The slip that is shown on the screen; each print replaces it.
inline constexpr const char* kSlipFile = "C:\\ShopReq.txt";

class SlipPrinter {
public:
    enum class Target { slipFile, port };

    SlipPrinter(Module& module, Target target) : module_(module), target_(target) {}

    /// Once for each printer. Errors pass to the caller, after what was printed so far was handed over: missing or
    /// unreadable settings, an output that cannot be opened, the database's own. Errors within header and footer are
    /// reported, and the slip goes on.
    void PrintBill(std::int32_t requestId);

private:
    void HeaderPrint(std::int32_t requestId);
    void FooterPrint();

    std::vector<SlipLine> readLines(std::int32_t requestId);
    void addPrices(SlipLine& line, std::size_t index);
    RequestFacts readRequest(std::int32_t requestId) const;
    void openOutput();
    void write(const std::string& bytes);
    void print(const std::string& text);
    /// Opens, writes or closes; an error names where the slip was to go.
    void atOutput(const std::function<void()>& act) const;
    std::string shop() const { return std::to_string(module_.session.shopId); }

    struct ItemFacts {
        std::int32_t itemId = 0;
        double rate = 0; ///< cost, before the shop's revision
    };

    Module& module_;
    Target target_;
    CommonDb db_;
    SlipSettings settings_;
    std::vector<ItemFacts> items_; ///< of the lines, in their order
    std::unique_ptr<Output> output_;
    int headerLines_ = 0;
};

} // namespace goodsreq
