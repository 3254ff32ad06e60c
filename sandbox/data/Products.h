// What the sample company sells: products, each in several kinds and sizes, by category.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace sandbox {

/// Base units, as UnitId has them.
enum class Unit { piece = 1, kilogram = 2, litre = 3, metre = 4, packet = 5 };

struct ProductLine {
    const char* kinds; ///< parted by "|"
    const char* name;
    const char* sizes; ///< parted by "|"; price and cost grow with the place in the list
    Unit unit;
    int pence; ///< what the smallest size sells for
};

struct Category {
    const char* name;
    const char* code; ///< two letters that item codes begin with
    std::span<const ProductLine> lines;
};

std::span<const Category> categories();

struct Product {
    std::string description;
    Unit unit = Unit::piece;
    int pence = 0;
};

/// The first `count` products of the category, kinds and sizes mixed; no two have the same description.
std::vector<Product> productsOf(const Category& category, std::size_t count);

} // namespace sandbox
