#include "com/ModuleReference.h"

#include <atomic>

namespace com {
namespace {

std::atomic<long> references{0};

} // namespace

ModuleReference::ModuleReference() { ++references; }
ModuleReference::~ModuleReference() { --references; }

bool ModuleReference::any() { return references > 0; }

void ModuleReference::lock() { ++references; }
void ModuleReference::unlock() { --references; }

} // namespace com
