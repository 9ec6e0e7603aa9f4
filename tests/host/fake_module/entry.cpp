#include "host/fake_module/fake_module.h"

#include "core/shared_api.h"

extern "C" {

VEXIL_SHARED_API vexil::core::Module* CreateModuleInstance() {
    const auto fakeCase = vexil::host::tests::fakeCaseOfProcess();
    return fakeCase == vexil::host::tests::FakeCase::GivesNoModule
               ? nullptr
               : new vexil::host::tests::FakeModule(fakeCase);
}

VEXIL_SHARED_API void DestroyModuleInstance(vexil::core::Module* module) { delete module; }
}
