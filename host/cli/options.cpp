#include "host/cli/options.h"

#include "host/core/exit_code.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <map>

namespace vexil::host {

namespace {

constexpr const char* exitCodes =
    "Exit codes: 0 every run passed, 1 a card failed, 2 the request cannot be met as made,\n"
    "3 no card failed but some run ended without a verdict, or there is nothing to monitor,\n"
    "4 memory of a card could not be released, 70 an internal error. A failed card outranks 4,\n"
    "4 outranks 70, and 70 outranks 3.";

const std::map<std::string, Command> commands = {
    {"cards", Command::Cards},     {"tests", Command::Tests}, {"run", Command::Run},
    {"monitor", Command::Monitor}, {"log", Command::Log},     {"selfcheck", Command::SelfCheck},
};

std::string oneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

void defineCards(CLI::App& app, Options& options) {
    auto* cards = app.add_subcommand("cards", "List the video cards of the machine, with their live values");
    cards->add_flag("--json", options.json, "Write JSON (vexil.cards/1)");
}

void defineTests(CLI::App& app, Options& options) {
    auto* tests =
        app.add_subcommand("tests", "List the tests, their parameters, and which card supports them");
    tests->add_option("--card", options.request.card, "A card's id, or all")->type_name("ID|all");
    tests->add_flag("--json", options.json, "Write JSON (vexil.tests/1)");
}

void defineRun(CLI::App& app, Options& options) {
    auto* run =
        app.add_subcommand("run", "Run tests on the cards: without options, the quick tests on every card");
    run->add_option("--card", options.request.card, "A card's id, or all")->type_name("ID|all");
    run->add_option("--tests", options.request.tests,
                    "Ids separated by commas, quick, extended, or all (quick and extended)")
        ->type_name("IDS|quick|extended|all");
    run->add_option("--set", options.request.settings, "Set a parameter of the tests that have it")
        ->type_name("KEY=VALUE")
        ->expected(1)
        ->take_all();
    run->add_flag("--fail-fast", options.failFast,
                  "Start no other test after a failed card, or one whose memory was not released");
    run->add_option("--report", options.reports, "Write a report; may be given several times")
        ->type_name("FILE.json|FILE.html")
        ->expected(1)
        ->take_all();
    run->add_flag("--log", options.log, "Log each result, as it comes, among those of earlier runs");
}

void defineLog(CLI::App& app, Options& options) {
    auto* log = app.add_subcommand("log", "Show or clear the log of results that run --log has written");
    auto* list = log->add_subcommand("list", "Show the results in the log, the oldest first");
    list->add_flag("--json", options.json, "Write JSON (vexil.log/1)");
    auto* clear = log->add_subcommand("clear", "Remove all results from the log");
    clear->final_callback([&options] { options.clearLog = true; });
    // Required, as is said below in words that name both.
    log->require_subcommand(0, 1);
}

void defineSelfCheck(CLI::App& app) {
    app.add_subcommand("selfcheck",
                       "Break simulated cards in known ways, and show that each test finds its fault");
}

/// Answers what CLI11 is to say of a text that is no such number, and nothing for one that is.
template <typename Number>
auto numberFrom(Number low, Number high, const char* what) {
    return [=](const std::string& text) -> std::string {
        Number number{};
        const auto* last = text.data() + text.size();
        const auto [end, error] = std::from_chars(text.data(), last, number);
        // Said this way round, since "nan" is a number that compares with none.
        if (error == std::errc() && end == last && number >= low && number <= high) {
            return {};
        }
        return fmt::format("'{}' is no {} from {} to {}", text, what, low, high);
    };
}

void defineMonitor(CLI::App& app, Options& options) {
    constexpr double shortestInterval = 0.1;
    constexpr double longestInterval = 3600;
    constexpr std::uint64_t mostSamples = 1'000'000'000;
    auto* monitor = app.add_subcommand("monitor", "Show temperature, load and free memory of the cards again "
                                                  "and again, with their extremes and averages");
    monitor->add_option("--card", options.request.card, "A card's id, or all")->type_name("ID|all");
    monitor
        ->add_option("--interval", options.intervalSeconds,
                     "Seconds from one sample to the next, 0.1 to 3600 (default: 1)")
        ->type_name("S")
        ->check(numberFrom(shortestInterval, longestInterval, "number of seconds"));
    monitor->add_option("--count", options.count, "Samples to take (default: until Ctrl-C)")
        ->type_name("N")
        ->check(numberFrom(std::uint64_t{1}, mostSamples, "whole number"));
    monitor->add_option("--csv", options.csv, "Write every sample into a file, a line for each card")
        ->type_name("FILE");
}

} // namespace

ParsedArguments parseArguments(const std::vector<std::string>& arguments) {
    Options options;
    CLI::App app("Diagnostics of the video cards of a machine", "vxe-host");
    app.footer(exitCodes);
    app.set_version_flag("--version", "vxe-host " VEXIL_HOST_VERSION);
    app.add_option("--machine", options.machine,
                   "The machine to look at: the real one, or one described by a scenario, built in or a file "
                   "(default: real; run falls back on simulated without a display controller)")
        ->type_name("real|simulated[:SCENARIO]");
    app.add_option("--language", options.language, "The language of texts (default: the user's, else en)")
        ->type_name("FILE|CODE");
    app.add_option("--module", options.module, "The module to load (default: the one beside the program)")
        ->type_name("FILE");
    // The options above may stand behind the command as well.
    app.fallthrough();
    app.require_subcommand(0, 1);
    defineCards(app, options);
    defineTests(app, options);
    defineRun(app, options);
    defineSelfCheck(app);
    defineMonitor(app, options);
    defineLog(app, options);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        const auto chosen = app.get_subcommands();
        return {std::nullopt, chosen.empty() ? app.help() : chosen.front()->help()};
    } catch (const CLI::CallForVersion& version) {
        return {std::nullopt, std::string(version.what()) + '\n'};
    } catch (const CLI::ParseError& error) {
        throw UsageError(oneLine(error.what()));
    }
    const auto chosen = app.get_subcommands();
    if (chosen.empty()) {
        throw UsageError("no command is named: there is cards, tests, run, monitor, log and selfcheck "
                         "(--help tells more)");
    }
    const auto name = chosen.front()->get_name();
    if (name == "log" && chosen.front()->get_subcommands().empty()) {
        throw UsageError("log needs to know what to do: list or clear");
    }
    options.command = commands.at(name);
    return {std::move(options), {}};
}

} // namespace vexil::host
