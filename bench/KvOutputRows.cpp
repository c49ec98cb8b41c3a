#include "bench/KvOutputRows.h"

#include <fcntl.h>
#include <unistd.h>

#include <vector>

#include "bench/KvBenchFile.h"
#include "bench/KvMeasureInTurn.h"
#include "bench/KvMeasureProcesses.h"
#include "bench/KvTemporaryFolder.h"

namespace {

constexpr std::size_t kCopyBytes = 64 << 10;
constexpr double kMegabyte = 1e6;

bool Copy(int from, int to)
{
    std::vector<char> buffer(kCopyBytes);
    for (;;) {
        const ssize_t got = read(from, buffer.data(), buffer.size());
        if (got <= 0)
            return got == 0;
        if (write(to, buffer.data(), static_cast<std::size_t>(got)) != got)
            return false;
    }
}

bool CopyFile(const char* from, const char* to)
{
    const int source = open(from, O_RDONLY | O_CLOEXEC);
    const int target = open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const bool copied = source >= 0 && target >= 0 && Copy(source, target);
    const bool sourceClosed = source < 0 || close(source) == 0;
    const bool targetClosed = target < 0 || close(target) == 0;
    return copied && sourceClosed && targetClosed;
}

}  // namespace

CKvInputParameters KvOutputParameters(bool bound)
{
    CKvInputParameters parameters;
    parameters.overlap = 10;
    parameters.hitPercent = bound ? 100 : 0;
    return parameters;
}

bool KvMeasureOutput(const CKvBenchRun& run, CKvFindings& findings)
{
    const CKvTemporaryFolder folder;
    CKvInputPaths bound;
    CKvInputPaths free;
    if (!KvPrepareInputs(KvOutputParameters(true), folder.Path(), "bound", bound) ||
        !KvPrepareInputs(KvOutputParameters(false), folder.Path(), "free", free))
        return false;
    CKvProcess copy = run.Child("copy", {KvGamePath(bound), KvGamePath(bound) + ".copy"});
    copy.output = folder.Path() + "/seconds";
    std::vector<CKvMeasuredProcess> measured = {{run.Tool(bound)}, {run.Tool(free)}, {copy, true}};
    if (!KvMeasureProcesses(measured, run.rounds))
        return false;

    const auto outputBytes = static_cast<double>(KvFileBytes(KvGamePath(bound)));
    const CKvProcessCost& much = measured[0].cost;
    const CKvProcessCost& none = measured[1].cost;
    const double copySeconds = measured[2].cost.CpuSeconds();
    findings.push_back(
        {"6", (much.CpuSeconds() - none.CpuSeconds()) / copySeconds,
         KvNote("%.1f MB of output; tool %.3f s, nothing bound %.3f s, copy %.4f s",
                outputBytes / kMegabyte, much.CpuSeconds(), none.CpuSeconds(), copySeconds)});
    findings.push_back(
        {"7", (much.peakBytes - none.peakBytes) / outputBytes,
         KvNote("%.1f MB of output; tool %.1f MB, nothing bound %.1f MB", outputBytes / kMegabyte,
                much.peakBytes / kMegabyte, none.peakBytes / kMegabyte)});
    return true;
}

bool KvRunPlainCopy(std::span<const char* const> arguments)
{
    if (arguments.size() != 2)
        return false;
    bool copied = false;
    KvPrintSeconds(KvCpuSeconds([&] { copied = CopyFile(arguments[0], arguments[1]); }));
    return copied;
}
