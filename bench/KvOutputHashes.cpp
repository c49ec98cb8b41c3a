#include "bench/KvOutputHashes.h"

#include <cinttypes>
#include <cstdio>

#include "bench/KvBenchFile.h"
#include "bench/KvOutputRows.h"
#include "bench/KvStrainInputs.h"
#include "bench/KvTemporaryFolder.h"
#include "core/KvCrc64.h"

namespace {

constexpr const char* kByteOrders[] = {"LE", "BE"};
constexpr std::uint32_t kLarge = 240'000;
constexpr std::uint32_t kSiblings = 1'000'000;

bool PrintHash(const std::string& name, const char* byteOrder, const CKvProcess& process,
               const std::string& path)
{
    CKvProcessCost ignored;
    std::string content;
    if (!KvMeasureProcess(process, ignored) || !KvReadWholeFile(path, content))
        return false;
    std::printf("%-10s %s %10zu %016" PRIX64 "\n", name.c_str(), byteOrder, content.size(),
                CreateCrc64(content.data(), static_cast<unsigned int>(content.size())));
    std::fflush(stdout);
    return true;
}

bool PrintToolHashes(const CKvBenchRun& run, const std::string& name, const CKvInputPaths& inputs)
{
    for (const char* byteOrder : kByteOrders) {
        if (!PrintHash(name, byteOrder, run.Tool(inputs, byteOrder), KvGamePath(inputs)))
            return false;
    }
    return true;
}

bool PrintGenerated(const CKvBenchRun& run, const std::string& name,
                    const CKvInputParameters& parameters, const std::string& folder)
{
    CKvInputPaths inputs;
    return KvPrepareInputs(parameters, folder, name, inputs) && PrintToolHashes(run, name, inputs);
}

bool PrintNames(const CKvBenchRun& run, const std::string& folder)
{
    const std::string path = folder + "/names.tml";
    for (const char* byteOrder : kByteOrders) {
        if (!PrintHash("names", byteOrder,
                       run.Child("save-names", {"100000", "100000", path, byteOrder}), path))
            return false;
    }
    return true;
}

}  // namespace

bool KvPrintOutputHashes(const CKvBenchRun& run)
{
    const CKvTemporaryFolder temporary;
    const std::string& folder = temporary.Path();
    CKvInputParameters large;
    large.objects = kLarge;
    if (!PrintGenerated(run, "10MB", {}, folder) || !PrintGenerated(run, "100MB", large, folder) ||
        !PrintGenerated(run, "output", KvOutputParameters(true), folder))
        return false;
    for (const CKvStrain& strain : KvStrains()) {
        if (!PrintGenerated(run, strain.name, strain.parameters(strain.size, true), folder))
            return false;
    }
    CKvInputPaths siblings;
    return KvWriteSiblings(kSiblings, folder, "siblings", siblings) &&
           PrintToolHashes(run, "siblings", siblings) && PrintNames(run, folder);
}
