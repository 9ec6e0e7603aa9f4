#include "platform/library_names.h"
#include "simulated/direct3d/real_library.h"

#include <windows.h>

#include <cstdint>

// What the system's own Direct3D library asks of DXGI beyond the documented functions. Their arguments are
// words of which this library need not know anything but an upper limit: on 64-bit Windows the caller takes
// them off the stack.
namespace {

using Word = std::uintptr_t;
using Function = Word(WINAPI*)(Word, Word, Word, Word, Word, Word, Word, Word);

} // namespace

#define VEXIL_HAND_ON(name)                                                                                  \
    extern "C" Word WINAPI name(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h) {            \
        const auto real =                                                                                    \
            reinterpret_cast<Function>(vexil::simulated::realSymbol(vexil::platform::dxgiLibrary(), #name)); \
        return real == nullptr ? static_cast<Word>(E_NOTIMPL) : real(a, b, c, d, e, f, g, h);                \
    }

VEXIL_HAND_ON(CompatString)
VEXIL_HAND_ON(CompatValue)
VEXIL_HAND_ON(DXGID3D10CreateDevice)
VEXIL_HAND_ON(DXGID3D10CreateLayeredDevice)
VEXIL_HAND_ON(DXGID3D10ETWRundown)
VEXIL_HAND_ON(DXGID3D10GetLayeredDeviceSize)
VEXIL_HAND_ON(DXGID3D10RegisterLayers)
VEXIL_HAND_ON(DXGIReportAdapterConfiguration)

#undef VEXIL_HAND_ON
