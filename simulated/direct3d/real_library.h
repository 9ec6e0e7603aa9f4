#pragma once

namespace vexil::simulated {

/// A function of the real library of that name, which is loaded by its full path: by its name it would be
/// found to be this one. It is looked for in the folder above ours, where the programs stand, then in the
/// system's. It stays loaded. Null if there is no such library or function.
[[nodiscard]] void* realSymbol(const char* library, const char* symbol);

} // namespace vexil::simulated
