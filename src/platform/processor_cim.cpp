#include "platform/processor_cim.h"

#include "platform/processor.h"
#include "system/cim/cim_rows.h"

#include <string>
#include <string_view>
#include <utility>

namespace vexil::platform {

namespace {

using namespace system;

/// As Windows words it.
std::string usualCaption() {
    const auto signature = processorSignature(cpuid(1).eax);
    const auto* architecture = processorVendor(cpuid(0)) == "GenuineIntel" ? "Intel64" : "AMD64";
    return std::string(architecture) + " Family " + std::to_string(signature.family) + " Model " +
           std::to_string(signature.model) + " Stepping " + std::to_string(signature.stepping);
}

bool isNamed(const char* text, std::string_view name) { return text != nullptr && text == name; }

class ProcessorCim final : public Cim {
public:
    explicit ProcessorCim(std::unique_ptr<Cim> machine) : machine_(std::move(machine)) {}

    CimStatus queryWhere(const char* const* properties, const char* where, const char* className,
                         std::int32_t count, CimRows& rows, const wchar_t* nameSpace) override {
        return machine_->queryWhere(properties, where, className, count, rows, nameSpace);
    }
    CimStatus query(const char* const* properties, const char* className, std::int32_t count, CimRows& rows,
                    const wchar_t* nameSpace) override {
        if (!isNamed(className, "Win32_Processor") || count != 1 || properties == nullptr ||
            !isNamed(*properties, "Caption")) {
            return machine_->query(properties, className, count, rows, nameSpace);
        }
        const auto caption = libraryCaption();
        CimRowCollector collector;
        if (caption.status == 0 && caption.listed != 0) {
            collector.addRow();
            collector.addText(caption.text[0] == '\0' ? usualCaption() : caption.text);
        }
        rows = collector.take();
        return static_cast<CimStatus>(caption.status);
    }
    CimStatus writeRecord(const std::vector<std::string>& names, const std::vector<std::string>& values,
                          const char* className, const wchar_t* nameSpace) override {
        return machine_->writeRecord(names, values, className, nameSpace);
    }
    CimStatus removeNamespace(const wchar_t* root, const wchar_t* parent, const wchar_t* child) override {
        return machine_->removeNamespace(root, parent, child);
    }

private:
    std::unique_ptr<Cim> machine_;
};

} // namespace

std::unique_ptr<Cim> makeProcessorCim() {
    auto machine = makeCim();
    return hasProcessorLibrary() ? std::make_unique<ProcessorCim>(std::move(machine)) : std::move(machine);
}

} // namespace vexil::platform
