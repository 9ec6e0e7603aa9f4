#include "core/vxk_service.h"

// Out of line, so that the class stands among the module's exports with all that it is made of.
VXKService::VXKService() = default;
VXKService::VXKService(const VXKService&) = default;
VXKService& VXKService::operator=(const VXKService&) = default;
VXKService::~VXKService() = default;
