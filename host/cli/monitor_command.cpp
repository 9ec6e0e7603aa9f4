#include "host/cli/commands.h"

#include "host/cli/monitor_view.h"
#include "host/core/host_keys.h"
#include "host/core/monitoring.h"
#include "host/core/sample_file.h"
#include "host/core/test_runner.h"

#include <fmt/format.h>

#include <optional>

namespace vexil::host {

namespace {

void monitorAll(const CommandContext& context, const Session& session, const std::vector<Card>& cards,
                SampleFile* file) {
    std::vector<core::DeviceRecord> records;
    for (const auto& card : cards) {
        records.push_back(card.record);
    }
    const auto& options = context.options;
    MonitorSettings settings;
    settings.interval = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::duration<double>(options.intervalSeconds));
    settings.count = options.count;
    if (settings.count == 0) {
        context.terminal.paragraph(context.language.text(keys::stopMonitor), 0, Style::Dim);
    }

    const auto sources = liveSources(session.module(), context.environment.hardwareThreads);
    SteadySampleTimer timer;
    MonitorView view(context.terminal, context.language, records, settings.count);
    if (file != nullptr) {
        file->begin();
    }
    monitorCards([&] { return readLiveValues(cards, sources); }, settings, context.environment.cancel, timer,
                 [&](const Sample& sample) {
                     if (file != nullptr) {
                         file->write(sample, records);
                     }
                     view.show(sample);
                 });
    view.finish();
}

} // namespace

ExitCode monitorCommand(const CommandContext& context) {
    const auto& options = context.options;
    std::optional<SampleFile> file;
    if (!options.csv.empty()) {
        file.emplace(options.csv);
    }
    const auto session = openSession(context, false, true);
    std::vector<Card> cards;
    for (const auto index : selectCards(session.cards(), options.request.card)) {
        cards.push_back(session.cards()[index]);
    }
    if (cards.empty()) {
        explainScan(context, session);
        return ExitCode::NoVerdict;
    }
    if (!dispatcherHasWorker(context.environment.hardwareThreads)) {
        context.terminal.paragraph(context.language.text(keys::noWorker), 0, Style::Warning);
        return ExitCode::NoVerdict;
    }
    monitorAll(context, session, cards, file ? &*file : nullptr);
    if (file) {
        context.terminal.line(context.language.text(keys::samplesWrittenTo) + ' ' + file->path());
    }
    return ExitCode::AllPassed;
}

} // namespace vexil::host
