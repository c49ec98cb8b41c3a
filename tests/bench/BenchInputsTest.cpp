// The inputs of the benchmark are what its figures stand on: the same on every machine, and bound
// by their rules as the parameters say. Binding is done anew here, the slow and plain way.

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>

#include "bench/KvInputGenerator.h"
#include "bench/KvInputPlan.h"
#include "bench/KvTemporaryFolder.h"

namespace {

/// FNV-1a, 64 bits.
std::uint64_t Hash(std::uint64_t hash, const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    for (std::istreambuf_iterator<char> byte(file); byte != std::istreambuf_iterator<char>();
         ++byte)
        hash = (hash ^ static_cast<unsigned char>(*byte)) * 0x100000001B3U;
    return hash;
}

TEST(BenchInputs, AreTheSameBytesOnEveryMachine)
{
    CKvInputParameters parameters;
    parameters.objects = 200;
    parameters.rules = 20;
    const CKvTemporaryFolder folder;
    CKvInputPaths paths;
    EXPECT_FALSE(KvGenerateInputs(parameters, "/absent/folder", paths));
    ASSERT_TRUE(KvGenerateInputs(parameters, folder.Path(), paths));
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const std::string& path :
         {paths.level, paths.rules, paths.firstTemplates, paths.secondTemplates})
        hash = Hash(hash, path);
    // Figures from before and after a change of this number do not compare.
    EXPECT_EQ(hash, 0x5C595072E13F053CU);
}

/// Each hit object is bound by as many rules as asked, and no rule binds objects of two kinds.
void ExpectBinds(std::uint32_t objects, std::uint32_t rules, std::uint32_t hitPercent,
                 std::uint32_t overlap)
{
    CKvInputParameters parameters;
    parameters.objects = objects;
    parameters.rules = rules;
    parameters.hitPercent = hitPercent;
    parameters.overlap = overlap;
    const CKvInputPlan plan(parameters);
    std::map<std::string, std::uint32_t> rulesOfObject;
    for (std::uint32_t rule = 0; rule < rules; ++rule) {
        std::set<EKvObjectKind> kinds;
        for (const EKvObjectKind kind : kKvObjectKinds)
            for (std::uint32_t i = 0; i < plan.ObjectCount(kind); ++i) {
                const std::string name = plan.ObjectName(kind, i);
                if (CKvInputPlan::IsGlobal(rule) || name.find(plan.Pattern(rule)) == name.npos ||
                    name.find(CKvInputPlan::ExceptedText(rule, 0)) != name.npos)
                    continue;
                ++rulesOfObject[name];
                kinds.insert(kind);
            }
        EXPECT_LE(kinds.size(), 1U) << "rule " << rule;
    }
    EXPECT_NEAR(static_cast<double>(rulesOfObject.size()), objects * hitPercent / 100.0,
                kKvObjectKinds.size());
    for (const auto& [name, count] : rulesOfObject)
        EXPECT_EQ(count, overlap) << name;
}

TEST(BenchInputs, RulesBindAsTheParametersSay)
{
    ExpectBinds(1000, 30, 30, 1);
    ExpectBinds(400, 200, 100, 10);
    ExpectBinds(200, 20, 0, 1);
    ExpectBinds(100, 500, 100, 1);  // more rules than objects
}

}  // namespace
