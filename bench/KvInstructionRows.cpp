#include "bench/KvInstructionRows.h"

#include "bench/KvInstructionCounter.h"
#include "bench/KvTemporaryFolder.h"

namespace {

constexpr std::uint32_t kTinyObjects = 20;
constexpr double kMillion = 1e6;

}  // namespace

bool KvMeasureInstructions(const CKvBenchRun& run, CKvFindings& findings)
{
    const CKvTemporaryFolder folder;
    CKvInputParameters tinyParameters;
    tinyParameters.objects = kTinyObjects;
    CKvInputPaths standard;
    CKvInputPaths tiny;
    std::optional<std::vector<double>> counts;
    if (!KvPrepareInputs({}, folder.Path(), "10MB", standard) ||
        !KvPrepareInputs(tinyParameters, folder.Path(), "tiny", tiny) ||
        !KvCountInstructions(
            {run.Tool(standard), run.Yardstick(standard), run.Tool(tiny), run.Yardstick(tiny)},
            folder.Path(), counts))
        return false;
    if (!counts) {
        for (const std::string_view row : {"2", "10"})
            findings.push_back({row, std::nullopt, "valgrind is not installed"});
        return true;
    }
    const std::vector<double>& count = *counts;
    findings.push_back({"2", count[0] / count[1],
                        KvNote("10 MB, callgrind; tool %.1f, TinyXML %.1f million",
                               count[0] / kMillion, count[1] / kMillion)});
    findings.push_back({"10", (count[2] - count[3]) / kMillion,
                        KvNote("callgrind; tool %.2f, TinyXML %.2f million", count[2] / kMillion,
                               count[3] / kMillion)});
    return true;
}
