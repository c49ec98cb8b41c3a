// KvBenchObjects: what a pool of 100,000 named objects costs, beside a std::vector and a
// std::unordered_map that do the same by hand. Both must end with the same objects.

#include <array>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "bench/KvBenchReport.h"
#include "bench/KvBenchRounds.h"
#include "bench/KvBenchStatistics.h"
#include "resource/KvObjectPool.h"

namespace {

constexpr std::size_t kObjects = 100'000;

/// Fewer, since each takes a step that is linear in the number of objects.
constexpr std::size_t kRemovals = 2'000;

constexpr double kFindGoal = 1.5;

class CPool
{
public:
    void Add(std::unique_ptr<CKvManaged> object) { m_pool.AddObject(object.release()); }
    CKvManaged* Find(const CKvIdentifier& name) const { return m_pool.FindObject(name); }
    void Rename(CKvManaged* object, const CKvIdentifier& name)
    {
        m_pool.RenameObject(object, name);
    }
    std::unique_ptr<CKvManaged> Remove(CKvManaged* object)
    {
        m_pool.RemoveObject(object);
        return std::unique_ptr<CKvManaged>(object);
    }
    CKvManaged* Get(std::size_t index) const { return m_pool.GetObject(static_cast<int>(index)); }

private:
    CKvObjectPool m_pool{CKvIdentifier()};
};

class CByHand
{
public:
    void Add(std::unique_ptr<CKvManaged> object)
    {
        m_table.emplace(object->GetIdentifier().GetCrc64(), object.get());
        m_list.push_back(std::move(object));
    }
    CKvManaged* Find(const CKvIdentifier& name) const
    {
        const auto found = m_table.find(name.GetCrc64());
        return found != m_table.end() ? found->second : nullptr;
    }
    void Rename(CKvManaged* object, const CKvIdentifier& name)
    {
        m_table.erase(object->GetIdentifier().GetCrc64());
        object->SetIdentifier(name);
        m_table.emplace(name.GetCrc64(), object);
    }
    std::unique_ptr<CKvManaged> Remove(CKvManaged* object)
    {
        auto place = m_list.end() - 1;
        while (place->get() != object)
            --place;
        std::unique_ptr<CKvManaged> removed = std::move(*place);
        m_list.erase(place);
        m_table.erase(object->GetIdentifier().GetCrc64());
        return removed;
    }
    CKvManaged* Get(std::size_t index) const { return m_list[index].get(); }

private:
    std::vector<std::unique_ptr<CKvManaged>> m_list;
    std::unordered_map<std::uint64_t, CKvManaged*> m_table;
};

/// What one round does, the same for both.
struct CPlan
{
    std::vector<CKvIdentifier> names;
    std::vector<CKvIdentifier> newNames;
    std::vector<CKvIdentifier> absent;
    std::vector<std::size_t> order;
};

CPlan MakePlan()
{
    CKvBenchRandom random(1);
    CPlan plan;
    for (std::size_t i = 0; i < kObjects; ++i) {
        plan.names.emplace_back(random.Next());
        plan.newNames.emplace_back(random.Next());
        plan.absent.emplace_back(random.Next());
        plan.order.push_back(i);
        std::swap(plan.order[i], plan.order[random.Below(i + 1)]);
    }
    return plan;
}

enum EOperation : std::size_t
{
    ADD,
    FIND_HIT,
    FIND_MISS,
    RENAME,
    REMOVE,
    OPERATION_COUNT
};

/// The time of each operation in a round, and a sum over what was found and what is left.
struct CRound
{
    std::array<double, OPERATION_COUNT> ms = {};
    std::uint64_t sum = 0;

    void Note(const CKvManaged* found, std::uint64_t weight = 1)
    {
        sum += found != nullptr ? found->GetIdentifier().GetCrc64() * weight : 1;
    }
};

/// CPU time, which a busy machine stretches least.
template <typename TOperation>
double MeasureMs(TOperation operation)
{
    const std::clock_t start = std::clock();
    operation();
    return static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
}

template <typename TObjects>
CRound RunRound(const CPlan& plan)
{
    CRound round;
    TObjects objects;
    std::vector<std::unique_ptr<CKvManaged>> made;
    std::vector<CKvManaged*> all;
    for (const CKvIdentifier& name : plan.names) {
        made.push_back(std::make_unique<CKvManaged>(name));
        all.push_back(made.back().get());
    }
    round.ms[ADD] = MeasureMs([&] {
        for (std::unique_ptr<CKvManaged>& object : made)
            objects.Add(std::move(object));
    });
    round.ms[FIND_HIT] = MeasureMs([&] {
        for (const std::size_t i : plan.order)
            round.Note(objects.Find(plan.names[i]));
    });
    round.ms[FIND_MISS] = MeasureMs([&] {
        for (const CKvIdentifier& name : plan.absent)
            round.Note(objects.Find(name));
    });
    round.ms[RENAME] = MeasureMs([&] {
        for (const std::size_t i : plan.order)
            objects.Rename(all[i], plan.newNames[i]);
    });
    std::vector<std::unique_ptr<CKvManaged>> removed(kRemovals);
    round.ms[REMOVE] = MeasureMs([&] {
        for (std::size_t i = 0; i < kRemovals; ++i)
            removed[i] = objects.Remove(all[plan.order[i]]);
    });
    for (std::size_t i = 0; i < kObjects - kRemovals; ++i)
        round.Note(objects.Get(i), i + 2);
    for (const CKvIdentifier& name : plan.newNames)
        round.Note(objects.Find(name));
    return round;
}

struct CCompared
{
    const char* what;
    std::size_t count;
    std::optional<double> goal;
    std::vector<double> poolMs;
    std::vector<double> byHandMs;
};

}  // namespace

int main(int argc, char** argv)
{
    int rounds = 11;
    if (!KvReadRoundsOption(argc, argv, "KvBenchObjects", rounds))
        return 2;
    const CPlan plan = MakePlan();
    std::array<CCompared, OPERATION_COUNT> compared = {
        {{"add / by hand", kObjects, {}, {}, {}},
         {"find, hit / by hand", kObjects, kFindGoal, {}, {}},
         {"find, miss / by hand", kObjects, kFindGoal, {}, {}},
         {"rename / by hand", kObjects, {}, {}, {}},
         {"remove / by hand", kRemovals, {}, {}, {}}}};
    for (int i = 0; i < rounds; ++i) {
        const CRound pool = RunRound<CPool>(plan);
        const CRound byHand = RunRound<CByHand>(plan);
        if (pool.sum != byHand.sum) {
            std::fprintf(stderr, "bench: the objects differ from those by hand\n");
            return 1;
        }
        for (std::size_t operation = 0; operation < OPERATION_COUNT; ++operation) {
            compared[operation].poolMs.push_back(pool.ms[operation]);
            compared[operation].byHandMs.push_back(byHand.ms[operation]);
        }
    }

    std::printf("medians of %d rounds among %zu objects, a single operation\n\n", rounds, kObjects);
    std::vector<CKvBenchFigure> figures;
    for (const CCompared& pair : compared) {
        const double pool = KvMedian(pair.poolMs);
        const double byHand = KvMedian(pair.byHandMs);
        const double nsPerMs = 1e6 / static_cast<double>(pair.count);
        std::printf("%-25s %9.1f ns / %9.1f ns\n", pair.what, pool * nsPerMs, byHand * nsPerMs);
        figures.push_back({pair.what, pool / byHand, pair.goal});
    }
    std::printf("\n");
    KvPrintFigures(figures);
    return 0;
}
