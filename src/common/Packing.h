// Packing types, units and prices of items, as line entry and printing need them.
#pragma once

#include "common/Module.h"
#include "forms/ListView.h"

namespace goodsreq {

// Each of these but fnGetShipmentSellingPrice reports its own errors, so that the user goes on.

/// The item's price for the session's shop in a currency, kept to two decimals; 0 when there is none or it cannot be
/// read. Inter-division sales take the wholesale price, every other screen the selling price.
double fnGetSellingPrice(Module& module, std::int32_t itemId, std::int32_t currencyId);

/// The shop's shipment selling price of the item, or head office's where the item's price is fixed there. Null or Empty
/// when there is none.
automation::Value fnGetShipmentSellingPrice(Module& module, std::int32_t itemId, std::int32_t shopId);

/// Lists the item's active packings that have a capacity for the item's unit: id, name, and an empty quantity.
void FillPackingTypes(Module& module, forms::ListView& list, std::int32_t itemId);

/// Writes into each listed packing how many packs `quantity` base units make, as a fraction ("2.50"). A packing without
/// a capacity keeps its empty quantity; at one with the capacity 0 it stops with error 11.
void FillPackingQuantities(Module& module, forms::ListView& list, std::int32_t itemId, double quantity);

/// "" when it cannot be read.
std::string fnGetUnitCode(Module& module, std::int32_t itemId);

} // namespace goodsreq
