#pragma once

#include "host/core/language.h"
#include "host/core/report.h"
#include "host/core/test_catalogue.h"
#include "system/result_log.h"

#include <string>
#include <vector>

// The machine-readable output. Each document names its schema; fields may be added, none changes its meaning.
// Keys stay keys; a translated text has a field of its own.
namespace vexil::host {

/// "vexil.cards/1".
[[nodiscard]] std::string cardsDocument(const Machine& machine, const std::vector<core::DeviceRecord>& cards,
                                        const std::vector<LiveValues>& live, const Language& language);

/// "vexil.tests/1". Tests that the module lists and does not make have "available": false.
[[nodiscard]] std::string testsDocument(const Machine& machine, const std::vector<CatalogueEntry>& tests,
                                        const std::vector<core::DeviceRecord>& cards,
                                        const Language& language);

/// "vexil.report/1".
[[nodiscard]] std::string reportDocument(const Report& report, const Language& language);

/// "vexil.log/1"; the fields of a record are texts as the log keeps them.
[[nodiscard]] std::string logDocument(const std::string& place,
                                      const std::vector<system::ResultRecord>& records);

} // namespace vexil::host
