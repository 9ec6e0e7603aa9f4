#pragma once

#include "module/cpu/cpu_machine.h"
#include "suite/driver_service/driver_service_base.h"
#include "system/cim/cim_rows.h"

#include <cstring>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vexil::tests {

/// A driver service whose registers a test fills in. What is not there cannot be read.
class FakeService final : public DriverServiceBase {
public:
    struct Access {
        bool isWrite;
        PciConfigRequest request;
        std::uint32_t value; ///< of a write
    };

    std::int32_t ready = 1;
    std::map<std::uint32_t, std::uint64_t> msrs;
    std::map<std::uint32_t, std::uint32_t> pciRegisters; ///< by offset
    std::int32_t writeStatus = 0;
    std::vector<Access> accesses;
    std::function<void()> onReadMsr = [] {};

    std::int32_t isReady() override { return ready; }
    std::int32_t readPciConfig(const PciConfigRequest& request, std::uint32_t* result) override {
        accesses.push_back({false, request, 0});
        const auto found = pciRegisters.find(request.offset);
        if (found == pciRegisters.end()) {
            return 7;
        }
        *result = found->second;
        return 0;
    }
    std::int32_t writePciConfig(const PciConfigRequest& request) override {
        accesses.push_back({true, request, *request.value});
        return writeStatus;
    }
    std::int32_t readMsr(std::uint32_t reg, std::uint64_t* result) override {
        onReadMsr();
        const auto found = msrs.find(reg);
        if (found == msrs.end()) {
            return 7;
        }
        *result = found->second;
        return 0;
    }
};

/// A repository that knows the processor's caption.
class CaptionCim final : public system::Cim {
public:
    CaptionCim(system::CimStatus status, std::optional<std::string> caption,
               std::vector<std::string>& queries)
        : status_(status), caption_(std::move(caption)), queries_(queries) {}

    system::CimStatus query(const char* const* properties, const char* className, std::int32_t count,
                            system::CimRows& rows, const wchar_t* nameSpace) override {
        queries_.push_back(std::string(*properties) + " of " + className + ", " + std::to_string(count) +
                           (std::wstring(nameSpace) == L"ROOT\\CIMV2" ? "" : ", in another namespace"));
        system::CimRowCollector collector;
        if (caption_) {
            collector.addRow();
            collector.addText(*caption_);
            collector.addRow();
            collector.addText("AMD64 Family 99 Model 99 Stepping 9");
        }
        rows = collector.take();
        return status_;
    }
    system::CimStatus queryWhere(const char* const*, const char*, const char*, std::int32_t, system::CimRows&,
                                 const wchar_t*) override {
        return system::CimStatus::QueryFailed;
    }
    system::CimStatus writeRecord(const std::vector<std::string>&, const std::vector<std::string>&,
                                  const char*, const wchar_t*) override {
        return system::CimStatus::NotConnected;
    }
    system::CimStatus removeNamespace(const wchar_t*, const wchar_t*, const wchar_t*) override {
        return system::CimStatus::NoLocator;
    }

private:
    system::CimStatus status_;
    std::optional<std::string> caption_;
    std::vector<std::string>& queries_;
};

/// One at a time: the functions of a library know no object, so they work on the last machine made.
class FakeCpuMachine final : public module::cpu::CpuMachine {
public:
    FakeCpuMachine() { current_ = this; }

    std::string vendor = "GenuineIntel";
    std::optional<std::string> caption;
    system::CimStatus cimStatus = system::CimStatus::Success;
    std::vector<std::string> queries;
    FakeService service;
    bool hasLibrary = true;
    bool hasCreate = true;
    bool hasDestroy = true;
    bool createsService = true;
    std::vector<std::string> calls;

    platform::CpuidRegisters cpuid(std::uint32_t leaf) override {
        platform::CpuidRegisters registers;
        if (leaf == 0) {
            std::memcpy(&registers.ebx, vendor.data(), 4);
            std::memcpy(&registers.edx, vendor.data() + 4, 4);
            std::memcpy(&registers.ecx, vendor.data() + 8, 4);
        }
        return registers;
    }
    std::unique_ptr<system::Cim> makeCim() override {
        return std::make_unique<CaptionCim>(cimStatus, caption, queries);
    }
    void* openDriverService() override {
        calls.emplace_back("open");
        return hasLibrary ? this : nullptr;
    }
    void* resolve(void* library, const char* symbol) override {
        calls.push_back(std::string("resolve ") + symbol);
        const std::string name = symbol;
        if (library == this && name == "CreateVXKService" && hasCreate) {
            return reinterpret_cast<void*>(&create);
        }
        if (library == this && name == "DestroyVXKService" && hasDestroy) {
            return reinterpret_cast<void*>(&destroy);
        }
        return nullptr;
    }
    void release(void*) override { calls.emplace_back("release"); }

private:
    static VXKService* create() { return current_->createsService ? &current_->service : nullptr; }
    static void destroy(VXKService* service) {
        current_->calls.emplace_back(service == &current_->service ? "destroy" : "destroy null");
    }

    static inline FakeCpuMachine* current_ = nullptr;
};

} // namespace vexil::tests
