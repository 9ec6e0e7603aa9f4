#include "host/core/json_documents.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace vexil::host {

namespace {

/// Fields stand in the order in which they are documented.
using Json = nlohmann::ordered_json;

std::string write(const Json& document) {
    // Names come from hardware: what is no UTF-8 in them becomes the replacement character.
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

template <typename Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

Json liveJson(const LiveValues& live) {
    return {{"temperatureCelsius", orNull(live.temperatureCelsius)},
            {"usagePercent", orNull(live.usagePercent)},
            {"freeMemoryBytes", orNull(live.freeMemoryBytes)}};
}

Json cardJson(const core::DeviceRecord& card, const LiveValues& live, const Language& language) {
    Json rows = Json::array();
    for (const auto& [key, value] : card.rows) {
        rows.push_back({{"key", key}, {"value", value}});
    }
    return {{"id", card.id},           {"udi", card.udi},
            {"name", card.name},       {"title", language.text(card.name)},
            {"rows", std::move(rows)}, {"notices", card.notices},
            {"present", card.present}, {"live", liveJson(live)}};
}

Json cardsJson(const std::vector<core::DeviceRecord>& cards, const std::vector<LiveValues>& live,
               const Language& language) {
    Json list = Json::array();
    for (std::size_t i = 0; i < cards.size(); ++i) {
        list.push_back(cardJson(cards[i], live[i], language));
    }
    return list;
}

Json parameterJson(const core::TestParameterDescription& parameter, const Language& language) {
    return {{"key", parameter.key},
            {"name", parameter.name},
            {"title", language.text(parameter.name)},
            {"description", parameter.description},
            {"default", parameter.defaultValue},
            {"type", parameter.type},
            {"flags", parameter.flags},
            {"range", parameter.range}};
}

Json testJson(const CatalogueEntry& entry, const std::vector<core::DeviceRecord>& cards,
              const Language& language) {
    Json parameters = Json::array();
    for (const auto& parameter : entry.parameters) {
        parameters.push_back(parameterJson(parameter, language));
    }
    Json supportedBy = Json::array();
    for (const auto card : entry.supportedBy) {
        supportedBy.push_back(cards[card].id);
    }
    const auto& descriptor = entry.descriptor;
    return {{"id", descriptor.id},
            {"name", descriptor.name},
            {"title", language.text(descriptor.name)},
            {"tooltip", descriptor.tooltip},
            {"description", language.text(descriptor.tooltip)},
            {"group", descriptor.group},
            {"groupRank", descriptor.groupRank},
            {"available", entry.available},
            {"expectedDurationMinutes", entry.available ? Json(entry.expectedDurationMinutes) : Json()},
            {"parameters", std::move(parameters)},
            {"supportedBy", std::move(supportedBy)}};
}

Json runJson(const TestRun& run, const std::vector<core::DeviceRecord>& cards, const Language& language) {
    Json messages = Json::array();
    for (const auto& message : run.messages) {
        messages.push_back(
            {{"kind", message.kind}, {"key", message.key}, {"text", language.text(message.key)}});
    }
    Json json = {{"card", cards[run.card].id},
                 {"test", run.testId},
                 {"name", run.name},
                 {"title", language.text(run.name)},
                 {"result", run.result},
                 {"outcome", resultName(run.result)},
                 {"messages", std::move(messages)},
                 {"progress", Json(run.progress)},
                 {"startedAt", toRfc3339(run.startedAt)},
                 {"durationSeconds", std::round(run.duration.count() * 1000.0) / 1000.0}};
    if (!run.error.empty()) {
        json["error"] = run.error;
    }
    return json;
}

Json machineFields(const char* schema, const Machine& machine) {
    Json document = {{"schema", schema}, {"machine", machine.name()}};
    if (machine.simulated) {
        document["scenario"] = machine.scenario;
    }
    return document;
}

} // namespace

std::string cardsDocument(const Machine& machine, const std::vector<core::DeviceRecord>& cards,
                          const std::vector<LiveValues>& live, const Language& language) {
    Json document = machineFields("vexil.cards/1", machine);
    document["cards"] = cardsJson(cards, live, language);
    return write(document);
}

std::string testsDocument(const Machine& machine, const std::vector<CatalogueEntry>& tests,
                          const std::vector<core::DeviceRecord>& cards, const Language& language) {
    Json document = machineFields("vexil.tests/1", machine);
    document["tests"] = Json::array();
    for (const auto& entry : tests) {
        document["tests"].push_back(testJson(entry, cards, language));
    }
    return write(document);
}

std::string reportDocument(const Report& report, const Language& language) {
    Json document = {{"schema", "vexil.report/1"},
                     {"host", {{"version", report.hostVersion}, {"os", report.operatingSystem}}},
                     {"module",
                      {{"id", report.module.id},
                       {"shortName", report.module.shortName},
                       {"nameKey", report.module.nameKey},
                       {"version", report.module.version}}},
                     {"machine", report.machine.name()}};
    if (report.machine.simulated) {
        document["scenario"] = report.machine.scenario;
    }
    document["startedAt"] = toRfc3339(report.startedAt);
    document["cards"] = cardsJson(report.cards, report.live, language);
    document["runs"] = Json::array();
    for (const auto& run : report.outcome.runs) {
        document["runs"].push_back(runJson(run, report.cards, language));
    }
    const auto& summary = report.outcome.summary;
    document["summary"] = {{"passed", summary.passed},
                           {"failed", summary.failed},
                           {"noVerdict", summary.noVerdict},
                           {"cleanupFailed", summary.cleanupFailed},
                           {"programErrors", summary.programErrors},
                           {"notRun", summary.notRun}};
    document["exitCode"] = static_cast<int>(report.exitCode);
    return write(document);
}

std::string logDocument(const std::string& place, const std::vector<system::ResultRecord>& records) {
    Json document = {{"schema", "vexil.log/1"}, {"place", place}};
    document["records"] = Json::array();
    for (const auto& record : records) {
        document["records"].push_back({{"id", record.id},
                                       {"moduleName", record.moduleName},
                                       {"deviceUdi", record.deviceUdi},
                                       {"deviceDisplayName", record.deviceDisplayName},
                                       {"testName", record.testName},
                                       {"testStatus", record.testStatus},
                                       {"testStartTimestamp", record.testStartTimestamp},
                                       {"testDuration", record.testDuration}});
    }
    return write(document);
}

} // namespace vexil::host
