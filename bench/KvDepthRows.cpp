#include "bench/KvDepthRows.h"

#include <algorithm>
#include <array>
#include <csignal>

#include "bench/KvBenchFile.h"
#include "bench/KvDepthInputs.h"
#include "bench/KvMeasureProcesses.h"
#include "bench/KvTemporaryFolder.h"

namespace {

template <class T>
using CDepths = std::array<T, 2>;
constexpr CDepths<std::uint32_t> kDepths = {500'000, 1'000'000};
constexpr int kMostToolRounds = 3;

/// Quadratic work at this depth would take hours.
constexpr const char* kCpuLimitSeconds = "60";

/// Shorter times are taken as so long: they are those of the start, not of the depth.
constexpr double kGrainSeconds = 0.005;

/// Long before the text of a dump could be made.
constexpr double kQuickSeconds = 0.25;

struct CStack
{
    const char* name;
    const char* bytes;
};
constexpr std::array<CStack, 2> kStacks = {{{"8 MiB", "8388608"}, {"256 KiB", "262144"}}};

/// What is done with the depth: by the tool when there is a document, else by the library.
struct CCase
{
    std::string_view row;
    const char* name;
    std::optional<EKvDeepDocument> document;

    /// A quick refusal is the documented result.
    bool mayRefuse = false;
};

constexpr std::array<CCase, 8> kCases = {{
    {"12a", "level", EKvDeepDocument::Level},
    {"12b", "rules", EKvDeepDocument::Rules},
    {"12c", "template", EKvDeepDocument::Template},
    {"12d", "binary", {}},
    {"12e", "dump", {}, true},
    {"12f", "copy", {}},
    {"12g", "compare", {}},
    {"12h", "release", {}},
}};

enum class EOutcome
{
    Works,
    Refuses,
    Crashes,
    TakesTooLong
};
constexpr std::array<const char*, 4> kOutcomeTexts = {"works", "refuses", "crashes",
                                                      "takes over 60 s"};

/// What came of one case at one depth on one stack; the time is that of the quickest round.
struct CDepthResult
{
    EOutcome outcome = EOutcome::Works;
    double seconds = 0;
};

EOutcome OutcomeOf(const CKvProcessEnd& end)
{
    if (end.signal == SIGXCPU)
        return EOutcome::TakesTooLong;
    if (end.signal != 0)
        return EOutcome::Crashes;
    return end.status == 0 ? EOutcome::Works : EOutcome::Refuses;
}

/// A process, and how to see that it did what it says.
struct CRun
{
    CKvProcess process;
    bool timesItself = false;

    /// The least size of the file that it writes.
    std::string written;
    std::uint64_t leastBytes = 0;
};

bool PrepareRun(const CKvBenchRun& run, const CCase& which, std::uint32_t depth,
                const std::string& folder, CRun& prepared)
{
    if (!which.document) {
        prepared.process =
            run.Child("depth", {which.name, std::to_string(depth), folder + "/deep.tml"});
        prepared.process.output = folder + "/seconds";
        prepared.timesItself = true;
        return true;
    }
    CKvInputPaths inputs;
    if (!KvWriteDeepInputs(*which.document, depth, folder, which.name + std::to_string(depth),
                           inputs))
        return false;
    prepared.process = run.Tool(inputs);
    // A template file that does not load is left out without a failure, but the output tells.
    prepared.written = KvGamePath(inputs);
    prepared.leastBytes = *which.document == EKvDeepDocument::Level ? 0 : depth;
    return true;
}

bool RunOnce(const CKvBenchRun& run, const CStack& stack, const CRun& prepared,
             CDepthResult& result)
{
    CKvProcess limited = run.Child("limit", {stack.bytes, kCpuLimitSeconds});
    limited.command.insert(limited.command.end(), prepared.process.command.begin(),
                           prepared.process.command.end());
    limited.output = prepared.process.output;

    CKvProcessEnd end;
    if (!KvRunProcess(limited, end))
        return false;
    result.outcome = OutcomeOf(end);
    if (result.outcome == EOutcome::Works && !prepared.written.empty() &&
        KvFileBytes(prepared.written) < prepared.leastBytes)
        result.outcome = EOutcome::Refuses;
    const double seconds =
        prepared.timesItself ? KvReadSeconds(prepared.process.output) : end.cost.CpuSeconds();
    result.seconds = result.seconds == 0 ? seconds : std::min(result.seconds, seconds);
    return true;
}

/// Runs both depths in turn. What does not work once is not run again.
bool MeasureOn(const CKvBenchRun& run, const CStack& stack, const CDepths<CRun>& prepared,
               CDepths<CDepthResult>& results)
{
    const int most = prepared[0].timesItself ? run.rounds : std::min(run.rounds, kMostToolRounds);
    for (int round = 0; round < most; ++round) {
        for (std::size_t i = 0; i < kDepths.size(); ++i) {
            if (results[i].outcome == EOutcome::Works &&
                !RunOnce(run, stack, prepared[i], results[i]))
                return false;
        }
    }
    return true;
}

/// Adds what one stack has shown to the finding: the worst growth counts.
void Judge(const CStack& stack, const CCase& which, const CDepthResult& half,
           const CDepthResult& whole, CKvFinding& finding)
{
    finding.note += KvNote("%s%s: %s %.3f s", finding.note.empty() ? "" : "; ", stack.name,
                           kOutcomeTexts[static_cast<std::size_t>(whole.outcome)], whole.seconds);
    if (half.outcome != whole.outcome)
        finding.note +=
            KvNote(" (half: %s)", kOutcomeTexts[static_cast<std::size_t>(half.outcome)]);
    const bool refusesWell =
        which.mayRefuse && whole.outcome == EOutcome::Refuses && whole.seconds <= kQuickSeconds;
    if ((whole.outcome != EOutcome::Works && !refusesWell) || half.outcome != whole.outcome) {
        finding.fails = true;
        return;
    }
    const double growth =
        std::max(whole.seconds, kGrainSeconds) / std::max(half.seconds, kGrainSeconds);
    finding.figure = std::max(finding.figure.value_or(0), growth);
}

bool MeasureCase(const CKvBenchRun& run, const CCase& which, const std::string& folder,
                 CKvFindings& findings)
{
    CDepths<CRun> prepared;
    for (std::size_t i = 0; i < kDepths.size(); ++i) {
        if (!PrepareRun(run, which, kDepths[i], folder, prepared[i]))
            return false;
    }
    CKvFinding finding;
    finding.row = which.row;
    for (const CStack& stack : kStacks) {
        CDepths<CDepthResult> results;
        if (!MeasureOn(run, stack, prepared, results))
            return false;
        Judge(stack, which, results[0], results[1], finding);
    }
    if (finding.fails)
        finding.figure.reset();
    findings.push_back(finding);
    return true;
}

}  // namespace

bool KvMeasureDepth(const CKvBenchRun& run, CKvFindings& findings)
{
    const CKvTemporaryFolder folder;
    return std::all_of(kCases.begin(), kCases.end(), [&](const CCase& which) {
        return MeasureCase(run, which, folder.Path(), findings);
    });
}
