// KvBenchCore: what the small operations of the core cost one by one. They are what the tool does
// millions of times, so a figure here says which of them moved when the tool's own figure did.

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "core/KvCrc64.h"
#include "core/KvIdentifier.h"
#include "core/KvNumberText.h"
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
