#pragma once

#include "core/vxk_service.h"

/// The slots of the driver service that this system has no use for, done for those who implement the others.
class DriverServiceBase : public VXKService {
public:
    void reserved4() override {}
    void reserved5() override {}
    void reserved7() override {}
    void reserved8() override {}
    void reserved9() override {}
    void reserved10() override {}
    void reserved11() override {}
    void reserved12() override {}
    void reserved13() override {}
    void reserved14() override {}
    void reserved15() override {}
    void reserved16() override {}
    void reserved17() override {}
    void reserved18() override {}
    void reserved19() override {}
    void reserved20() override {}
    void reserved21() override {}
    void reserved22() override {}
    void reserved23() override {}
    void reserved24() override {}
    void reserved25() override {}
    void reserved26() override {}
    void reserved27() override {}
    void reserved28() override {}
    void reserved29() override {}
};
