#include "platform/library_names.h"

namespace vexil::platform {

const char* direct3dLibrary() { return "d3d11.dll"; }
const char* dxgiLibrary() { return "dxgi.dll"; }
const char* kernelGraphicsLibrary() { return "gdi32.dll"; }
const char* cudaDriverLibrary() { return "nvcuda.dll"; }
const char* processorLibrary() { return "vexil_processor.dll"; }

} // namespace vexil::platform
