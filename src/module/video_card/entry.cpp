#include "module/video_card/entry.h"

#include "module/video_card/machine.h"
#include "module/video_card/module.h"

#include <exception>
#include <thread>

vexil::core::Module* CreateModuleInstance() {
    using namespace vexil::module::video_card;
    try {
        return new Module(systemMachine(), std::thread::hardware_concurrency());
    } catch (const std::exception&) {
        // No memory, or no thread to be had: nothing may be thrown at the host across a plain function.
        return nullptr;
    }
}

void DestroyModuleInstance(vexil::core::Module* module) { delete module; }
