#pragma once

#include "host/core/report.h"

namespace vexil::host::tests {

/// Two cards, one that passed and one that failed, with texts that markup and JSON must escape.
inline Report sampleReport() {
    Report report;
    report.hostVersion = "5.2.0";
    report.operatingSystem = "Some OS 1";
    report.module = {7, "VC", "VIDEO_CARD", "5.2.0"};
    report.machine = {true, "healthy", false};
    report.startedAt = std::chrono::system_clock::time_point(std::chrono::milliseconds(1767225599123));
    report.cards = {
        {"0100", "UDI_1", "First <Card>", {}, {{"LOCATION", "PCI bus 1"}}, {}, {"SOME_NOTICE"}, true},
        {"0a00", "", "Second \"Card\"", {}, {}, {}, {}, true}};
    report.live = {{45, 7, 1024}, {}};
    TestRun passed{0,
                   1,
                   "VIDEO_MEMORY_TEST",
                   core::TestResult::Passed,
                   {},
                   {},
                   {0, 2, 100},
                   report.startedAt,
                   std::chrono::duration<double>(1.23456)};
    passed.messages = {{0, "TOTAL_SURFACES_TESTED: 50/50"}};
    TestRun failed{1,  3,     "TEXTURE_PIPELINE_TEST", core::TestResult::Failed,           {},
                   {}, {100}, report.startedAt,        std::chrono::duration<double>(75.0)};
    failed.messages = {{1, "FIRST_LINE|SECOND_LINE"}};
    report.outcome.runs = {passed, failed};
    report.outcome.summary.passed = 1;
    report.outcome.summary.failed = 1;
    report.exitCode = ExitCode::CardFailed;
    return report;
}

} // namespace vexil::host::tests
