// The requests that the sample company's shops have raised among each other.
#pragma once

#include "sandbox/data/SampleItems.h"

namespace sandbox {

/// Of the 60 days before the process date, numbered in the order of their dates within each shop.
void writeRequests(const Rows::Execute& execute, const std::vector<SampleItem>& items, Random& random);

/// Names of the users, by id from 1; the same in every shop.
const char* userName(int userId);

} // namespace sandbox
