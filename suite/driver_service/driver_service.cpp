#include "driver_service.h"

#include <exception>

VXKService* CreateVXKService() {
    try {
        return vexil::driver_service::makeService().release();
    } catch (const std::exception&) {
        return nullptr;
    }
}

void DestroyVXKService(VXKService* service) { delete service; }
