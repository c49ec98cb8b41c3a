// KvBenchCore: what the small operations of the core cost one by one. They are what the tool does
// millions of times, so a figure here says which of them moved when the tool's own figure did.

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "core/KvCrc64.h"
#include "core/KvHashTable.h"
#include "core/KvIdentifier.h"
#include "core/KvNumberText.h"
#include "core/KvSaltedHash.h"
#include "core/KvString.h"

namespace {

/// So many different names that the register's table does not fit the first cache.
constexpr std::size_t kNames = 4096;

/// Names of 12 to 40 bytes as documents have them, a third of their letters in upper case.
std::vector<std::string> MakeNames()
{
    CKvBenchRandom random(1);
    std::vector<std::string> names(kNames);
    for (std::string& name : names) {
        const std::size_t length = 12 + random.Below(29);
        for (std::size_t i = 0; i < length; ++i) {
            const char first = random.Below(3) == 0 ? 'A' : 'a';
            name += static_cast<char>(first + static_cast<int>(random.Below(26)));
        }
    }
    return names;
}

void Crc64(benchmark::State& state)
{
    const std::string bytes(static_cast<std::size_t>(state.range(0)), 'K');
    const auto size = static_cast<unsigned int>(bytes.size());
    for ([[maybe_unused]] auto step : state)
        benchmark::DoNotOptimize(CreateCrc64(bytes.data(), size));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Crc64)->Arg(16)->Arg(4096);

void Crc64ToLower(benchmark::State& state)
{
    const std::string bytes(static_cast<std::size_t>(state.range(0)), 'K');
    const auto size = static_cast<unsigned int>(bytes.size());
    for ([[maybe_unused]] auto step : state)
        benchmark::DoNotOptimize(CreateCrc64_ToLower(bytes.data(), size, kKvCrc64Initial));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Crc64ToLower)->Arg(16)->Arg(4096);

/// Makes identifiers of texts that are registered already, as all but the first use of a name does.
void IdentifierOfKnownText(benchmark::State& state)
{
    const std::vector<std::string> names = MakeNames();
    for (const std::string& name : names)
        benchmark::DoNotOptimize(CKvIdentifier(name.c_str()));
    std::size_t next = 0;
    for ([[maybe_unused]] auto step : state)
        benchmark::DoNotOptimize(CKvIdentifier(names[next++ % kNames].c_str()));
}
BENCHMARK(IdentifierOfKnownText);

/// An entry as large as those that managers keep, so that each stands in a cache line of its own.
struct CEntry
{
    std::uint64_t crc = 0;
    std::array<char, 56> rest = {};
};

struct CEntryPolicy
{
    using Key = std::uint64_t;

    static Key GetKey(const CEntry& entry) { return entry.crc; }
    static bool MatchKey(const CEntry& entry, Key key) { return entry.crc == key; }
    static int CreateHash(Key key) { return static_cast<int>(static_cast<std::uint32_t>(key)); }
};

constexpr int kTableLog2 = 13;

/// The library's table behind the two operations that the comparison needs.
template <class TPolicy>
struct CLibraryTable
{
    TKvHashTable<CEntry, TPolicy> table{kTableLog2};

    void Add(CEntry& entry) { table.Insert(&entry); }
    CEntry* Find(std::uint64_t crc) const { return table.Find(crc); }
};

/// What it is compared with.
struct CStandardTable
{
    std::unordered_map<std::uint64_t, CEntry*> table;

    void Add(CEntry& entry) { table.emplace(entry.crc, &entry); }
    CEntry* Find(std::uint64_t crc) const
    {
        const auto found = table.find(crc);
        return found != table.end() ? found->second : nullptr;
    }
};

/// Looks up what is there (argument 1) or is not (0) among 100,000 entries, in an order that no
/// cache foresees, and reads what it found.
template <class TTable>
void FindByIdentifier(benchmark::State& state)
{
    constexpr std::size_t kEntries = 100'000;
    CKvBenchRandom random(1);
    std::vector<CEntry> entries(kEntries);
    TTable table;
    for (CEntry& entry : entries) {
        entry.crc = random.Next();
        table.Add(entry);
    }
    std::vector<std::uint64_t> wanted(kEntries);
    for (std::uint64_t& crc : wanted)
        crc = state.range(0) != 0 ? entries[random.Below(kEntries)].crc : random.Next();
    std::size_t next = 0;
    std::uint64_t sum = 0;
    for ([[maybe_unused]] auto step : state) {
        const CEntry* found = table.Find(wanted[next]);
        sum += found != nullptr ? found->crc : 0;
        next = next + 1 < kEntries ? next + 1 : 0;
    }
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(FindByIdentifier<CLibraryTable<CEntryPolicy>>)->Arg(1)->Arg(0);
BENCHMARK(FindByIdentifier<CLibraryTable<TKvSaltedPolicy<CEntryPolicy>>>)->Arg(1)->Arg(0);
BENCHMARK(FindByIdentifier<CStandardTable>)->Arg(1)->Arg(0);

/// Floats as documents have them: six decimals, below 2000.
std::vector<float> MakeFloats()
{
    CKvBenchRandom random(1);
    std::vector<float> values(kNames);
    for (float& value : values)
        value = static_cast<float>(random.Below(4'000'000'000)) / 1e6F - 2000;
    return values;
}

/// Room for the longest text of a float with six decimals.
using CNumberBuffer = std::array<char, 64>;

void FloatToText(benchmark::State& state)
{
    const std::vector<float> values = MakeFloats();
    CNumberBuffer text;
    std::size_t next = 0;
    for ([[maybe_unused]] auto step : state) {
        kvFloatToString(values[next++ % kNames], text.data());
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(FloatToText);

void TextToFloat(benchmark::State& state)
{
    std::vector<CNumberBuffer> texts(kNames);
    const std::vector<float> values = MakeFloats();
    for (std::size_t i = 0; i < kNames; ++i)
        kvFloatToString(values[i], texts[i].data());
    std::size_t next = 0;
    for ([[maybe_unused]] auto step : state)
        benchmark::DoNotOptimize(kvStringToFloat(texts[next++ % kNames].data()));
}
BENCHMARK(TextToFloat);

void TextToInteger(benchmark::State& state)
{
    CNumberBuffer text;
    kvIntToString(-1234567, text.data());
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(kvStringToS32(text.data()));
    }
}
BENCHMARK(TextToInteger);

void StringFromText(benchmark::State& state)
{
    const std::string text(static_cast<std::size_t>(state.range(0)), 'k');
    for ([[maybe_unused]] auto step : state) {
        TKvString<char> copy(text.c_str());
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(StringFromText)->Arg(0)->Arg(12)->Arg(200);

/// One concatenation of a text of so many bytes with a short one.
void StringConcatenation(benchmark::State& state)
{
    const std::string text(static_cast<std::size_t>(state.range(0)), 'k');
    const TKvString<char> first(text.c_str());
    for ([[maybe_unused]] auto step : state) {
        TKvString<char> joined = first + "_suffix";
        benchmark::DoNotOptimize(joined);
    }
}
BENCHMARK(StringConcatenation)->Arg(12)->Arg(4096);

/// A search without a hit whose first bytes often look like one, as object names of one kind do.
void StringFindMiss(benchmark::State& state)
{
    const TKvString<char> name("ent_door_cellar_17_entrance_205");
    for ([[maybe_unused]] auto step : state)
        benchmark::DoNotOptimize(name.Find("ent_door_cellar_18_"));
}
BENCHMARK(StringFindMiss);

}  // namespace

BENCHMARK_MAIN();
