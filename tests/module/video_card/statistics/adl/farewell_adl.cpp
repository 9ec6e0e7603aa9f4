#include "core/shared_api.h"
#include "platform/adl.h"

#include <cstdio>

// An ADL library that says when it is ended.
namespace adl = vexil::platform::adl;

extern "C" {
VEXIL_SHARED_API adl::Status ADL_Main_Control_Create(adl::Allocate, std::int32_t) { return adl::ok; }
VEXIL_SHARED_API adl::Status ADL_Main_Control_Destroy() {
    std::fputs("ADL was ended\n", stderr);
    return adl::ok;
}
VEXIL_SHARED_API adl::Status ADL_Adapter_NumberOfAdapters_Get(std::int32_t*) { return adl::error; }
VEXIL_SHARED_API adl::Status ADL_Adapter_Active_Get(std::int32_t, std::int32_t*) { return adl::error; }
VEXIL_SHARED_API adl::Status ADL_Adapter_AdapterInfo_Get(adl::AdapterInfo*, std::int32_t) {
    return adl::error;
}
VEXIL_SHARED_API adl::Status ADL2_Overdrive_Caps(adl::ContextHandle, std::int32_t, std::int32_t*,
                                                 std::int32_t*, std::int32_t*) {
    return adl::error;
}
}
