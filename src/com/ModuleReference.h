// Keeps the DLL loaded: every object handed out holds one.
#pragma once

namespace com {

class ModuleReference {
public:
    ModuleReference();
    ModuleReference(const ModuleReference&) : ModuleReference() {}
    ModuleReference& operator=(const ModuleReference&) { return *this; }
    ~ModuleReference();

    /// Whether anything still holds one.
    static bool any();
    /// A reference without an owner, as a client of the class factory takes and returns it.
    static void lock();
    static void unlock();
};

} // namespace com
