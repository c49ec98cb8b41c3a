#include "bench/KvInputParameters.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace {

struct COption
{
    std::string_view name;
    std::uint32_t CKvInputParameters::*parameter;
    std::uint32_t lowest;
    std::uint32_t highest;
};

constexpr std::uint32_t kNoLimit = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kMostItems = 10'000'000;

constexpr COption kOptions[] = {
    {"--objects", &CKvInputParameters::objects, 0, kMostItems},
    {"--bare-objects", &CKvInputParameters::bareObjects, 0, 1},
    {"--rules", &CKvInputParameters::rules, 0, kMostItems},
    {"--hit-percent", &CKvInputParameters::hitPercent, 0, 100},
    {"--overlap", &CKvInputParameters::overlap, 1, kMostItems},
    {"--templates", &CKvInputParameters::templates, 0, kMostItems},
    {"--excepted", &CKvInputParameters::exceptedPerRule, 0, kMostItems},
    {"--overrides", &CKvInputParameters::overridesPerRule, 0, kMostItems},
    {"--parameters", &CKvInputParameters::parametersPerRule, 0, kMostItems},
    {"--seed", &CKvInputParameters::seed, 0, kNoLimit},
};

}  // namespace

bool KvSetInputParameter(CKvInputParameters& parameters, std::string_view option,
                         std::string_view value)
{
    for (const COption& known : kOptions) {
        if (known.name != option)
            continue;
        std::uint32_t number = 0;
        const char* end = value.data() + value.size();
        const auto [stop, error] = std::from_chars(value.data(), end, number);
        if (error != std::errc() || stop != end)
            return false;
        if (number < known.lowest || number > known.highest)
            return false;
        parameters.*known.parameter = number;
        return true;
    }
    return false;
}

std::string_view KvInputParameterUsage()
{
    return "  --objects N       objects of the level (24000; 417 bytes each)\n"
           "  --bare-objects N  1: objects with a name alone (0)\n"
           "  --rules N         rules, one in ten global (300)\n"
           "  --hit-percent N   share of the objects that some rule binds (30)\n"
           "  --overlap N       rules that bind one hit object (1)\n"
           "  --templates N     templates in both files together (40)\n"
           "  --excepted N      excepted texts a rule (1)\n"
           "  --overrides N     overridden objects a rule (2)\n"
           "  --parameters N    parameters a rule (3)\n"
           "  --seed N          another seed gives other words and numbers (1)\n";
}
