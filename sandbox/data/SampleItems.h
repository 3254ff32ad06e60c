// The items of the sample company, their packings, and which shop carries which.
#pragma once

#include "sandbox/data/Products.h"
#include "sandbox/data/Random.h"
#include "sandbox/data/Rows.h"

#include <set>
#include <vector>

namespace sandbox {

struct SampleItem {
    int id = 0;
    int category = 0; ///< from 1
    std::string code;
    Product product;
    bool typeB = false;
    bool active = true;
    std::set<int> shops; ///< that carry it
};

std::vector<SampleItem> makeSampleItems(Random& random);

/// Categories that the shop deals in.
const std::set<int>& categoriesOfShop(int shop);

void writeUnitsAndPackings(const Rows::Execute& execute);
void writeItems(const Rows::Execute& execute, const std::vector<SampleItem>& items, Random& random);
void writeShopItems(const Rows::Execute& execute, const std::vector<SampleItem>& items, Random& random);

/// Pence as "12.34".
std::string money(int pence);

} // namespace sandbox
