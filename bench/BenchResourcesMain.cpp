// KvBenchResources: what a resource manager with 100,000 resources of an archive costs: scanning
// and loading beside half as many, finding beside a std::unordered_map that does the same by hand.

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "bench/KvBenchReport.h"
#include "bench/KvBenchStatistics.h"
#include "bench/KvMeasureInTurn.h"
#include "bench/KvTemporaryFolder.h"
#include "core/KvLog.h"
#include "file/KvBigFileGenerator.h"
#include "resource/KvResource.h"
#include "resource/KvResourceManagerManager.h"
#include "resource/KvVoidResourceManager.h"

namespace {

constexpr std::size_t kResources = 100'000;
constexpr int kRounds = 9;

/// Finding takes a few milliseconds a round.
constexpr int kFindRounds = 51;

/// Twice the work: 2 is linear, 4 quadratic.
constexpr double kGrowthGoal = 2.3;
constexpr double kFindGoal = 1.5;

/// Its data is in memory already, so that the manager's own work is what takes time.
class CMemoryResource : public CKvResource
{
public:
    using CKvResource::CKvResource;
    bool Load(CKvFileHandle*) override { return true; }
    void Unload() override {}
    EResourceType GetResourceType() const override { return TYPE_SOUND; }
    const char* GetTypeName() const override { return "sound"; }
    void GetMemoryUsage(int&, int&) const override {}
};

class CMemoryResourceManager : public CKvVoidResourceManager
{
public:
    CMemoryResourceManager() : CKvVoidResourceManager(CKvIdentifier("sound")) {}
    ~CMemoryResourceManager() override { Release(); }

    using CKvVoidResourceManager::ForceLoadAllResources;
    using CKvVoidResourceManager::ScanBigFile;

    const char* GetTypeName() const override { return "sound"; }

protected:
    CKvResource* CreateObject(const TKvString<char>& name) override
    {
        return new CMemoryResource(CKvIdentifier(name), GetIdentifier());
    }
    void DestroyObject(CKvResource* object) override { delete object; }
    bool LoadObject(CKvResource* object, CKvFileHandle* file) const override
    {
        return object->LoadFromFileHandle(file);
    }
};

/// The same names, in another order for each seed.
std::vector<CKvIdentifier> MakeNames(const char* prefix, std::uint64_t seed)
{
    CKvBenchRandom random(seed);
    std::vector<CKvIdentifier> names;
    for (std::size_t i = 0; i < kResources; ++i) {
        names.emplace_back((prefix + std::to_string(i)).c_str());
        std::swap(names[i], names[random.Below(i + 1)]);
    }
    return names;
}

/// Writes an archive's table alone, as no member's bytes are read.
bool WriteArchive(const std::string& path, const std::string& source,
                  const std::vector<CKvIdentifier>& names, std::size_t count)
{
    CKvBigFileGenerator generator;
    for (std::size_t i = 0; i < count; ++i) {
        if (!generator.AddFile(source.c_str(), names[i].DebugCString(), names[i].GetCrc64()))
            return false;
    }
    return generator.Save(path.c_str(), false, true);
}

/// Scans an archive, loads all, has half of them released with their pool and all destroyed while
/// the listing has them, the other half also while a pool has them.
bool LiveOnce(const std::string& archive)
{
    CKvResourceManagerManager& pools = CKvResourceManagerManager::GetInstance();
    CMemoryResourceManager manager;
    manager.ScanBigFile(archive.c_str());
    bool isLoaded = true;
    for (int i = 0; i < manager.GetCount(); ++i) {
        if (i == 0 || i == manager.GetCount() / 2)
            pools.CreateNewResourcePoolOnStack(manager.GetIdentifier());
        const CKvResource* resource = manager.GetVoidObject(i);
        isLoaded &= manager.FindVoidObject(resource->GetIdentifier()) == resource;
    }
    pools.ReleaseResourcePoolAtTopOfStack();
    manager.Release();
    pools.Shutdown();
    return isLoaded;
}

/// How much longer finding takes than by hand; a negative number when the results differ.
double CompareFinding(const CMemoryResourceManager& manager,
                      const std::vector<CKvIdentifier>& names)
{
    std::unordered_map<std::uint64_t, CKvResource*> byHand;
    for (int i = 0; i < manager.GetCount(); ++i)
        byHand.emplace(manager.GetFileNameCrc(i), manager.GetVoidObject(i));
    std::uintptr_t ours = 0;
    std::uintptr_t expected = 0;
    const CKvTurnCosts costs = KvMeasureInTurn(
        kFindRounds,
        [&] {
            for (const CKvIdentifier& name : names)
                ours += reinterpret_cast<std::uintptr_t>(manager.FindVoidObject(name));
        },
        [&] {
            for (const CKvIdentifier& name : names) {
                const auto found = byHand.find(name.GetCrc64());
                if (found != byHand.end() &&
                    found->second->GetStatus() == CKvResource::STATUS_LOADED)
                    expected += reinterpret_cast<std::uintptr_t>(found->second);
            }
        });
    return ours == expected ? costs.Ratio() : -1;
}

}  // namespace

int main()
{
    KvLogSetMasks({0, 0, 0});
    const CKvTemporaryFolder folder;
    const std::string source = folder.Path() + "/source";
    const std::string half = folder.Path() + "/half";
    const std::string whole = folder.Path() + "/whole";
    const std::vector<CKvIdentifier> names = MakeNames("data/harbour/sound_", 1);
    std::ofstream(source).flush();
    if (!WriteArchive(half, source, names, kResources / 2) ||
        !WriteArchive(whole, source, names, kResources)) {
        std::fprintf(stderr, "bench: cannot write the archives\n");
        return 1;
    }
    bool isWhole = true;
    const CKvTurnCosts life = KvMeasureInTurn(
        kRounds, [&] { isWhole &= LiveOnce(whole); }, [&] { isWhole &= LiveOnce(half); });

    CMemoryResourceManager manager;
    manager.ScanBigFile(whole.c_str());
    isWhole &= manager.ForceLoadAllResources();
    const double hit = CompareFinding(manager, MakeNames("data/harbour/sound_", 2));
    const double miss = CompareFinding(manager, MakeNames("data/harbour/absent_", 2));
    if (!isWhole || hit < 0 || miss < 0) {
        std::fprintf(stderr, "bench: resources are missing\n");
        return 1;
    }
    std::printf("scanning, loading and destroying 100,000 resources: %.0f ms\n\n", life.ours * 1e3);
    KvPrintFigures({{"100,000 resources / 50,000", life.Ratio(), kGrowthGoal},
                    {"find, hit / by hand", hit, kFindGoal},
                    {"find, miss / by hand", miss, kFindGoal}});
    return 0;
}
