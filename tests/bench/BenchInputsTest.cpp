// The inputs of the benchmark are what its figures stand on: the same on every machine,
// well-formed, and bound by their rules as the parameters say. Binding is done anew here, the slow
// and plain way.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "bench/KvInputGenerator.h"
#include "bench/KvInputPlan.h"
#include "bench/KvTemporaryFolder.h"

namespace {

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// FNV-1a, 64 bits.
std::uint64_t Hash(const std::string& bytes)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    return hash;
}

struct CInputs
{
    std::string level;
    std::string rules;
    std::string firstTemplates;
    std::string secondTemplates;

    std::string All() const { return level + rules + firstTemplates + secondTemplates; }
};

CInputs Generate(const CKvInputParameters& parameters)
{
    const CKvTemporaryFolder folder;
    CKvInputPaths paths;
    EXPECT_TRUE(KvGenerateInputs(parameters, folder.Path(), paths));
    return {ReadFile(paths.level), ReadFile(paths.rules), ReadFile(paths.firstTemplates),
            ReadFile(paths.secondTemplates)};
}

CKvInputParameters Small()
{
    CKvInputParameters parameters;
    parameters.objects = 200;
    parameters.rules = 20;
    return parameters;
}

void Parse(const std::string& text, TiXmlDocument& document, const char* root)
{
    document.Parse(text.c_str());
    ASSERT_FALSE(document.Error()) << document.ErrorDesc();
    ASSERT_STREQ(document.RootElement()->Value(), root);
}

std::vector<const TiXmlElement*> Children(const TiXmlNode* parent, const std::string& name)
{
    std::vector<const TiXmlElement*> children;
    for (const TiXmlElement* child = parent->FirstChildElement(name.c_str()); child != nullptr;
         child = child->NextSiblingElement(name.c_str()))
        children.push_back(child);
    return children;
}

std::string Text(const TiXmlElement* element, const char* attribute)
{
    const char* value = element->Attribute(attribute);
    return value != nullptr ? value : "";
}

/// Names of a level's objects, each with its kind.
std::map<std::string, EKvObjectKind> Objects(const TiXmlElement* level)
{
    std::map<std::string, EKvObjectKind> objects;
    for (const EKvObjectKind kind : kKvObjectKinds) {
        const CKvObjectKindNames& names = KvObjectKindNames(kind);
        for (const TiXmlElement* list : Children(level, std::string(names.list))) {
            for (const TiXmlElement* item : Children(list, std::string(names.item))) {
                const std::string name = Text(item, std::string(names.nameAttribute).c_str());
                EXPECT_FALSE(name.empty());
                EXPECT_TRUE(objects.emplace(name, kind).second) << name << " is there twice";
            }
        }
    }
    return objects;
}

std::set<std::string> Bound(const TiXmlElement* rule,
                            const std::map<std::string, EKvObjectKind>& objects)
{
    std::set<std::string> bound;
    std::set<EKvObjectKind> kinds;
    const std::string pattern = Text(rule, "name_include_string");
    for (const auto& [name, kind] : objects) {
        bool binds = name.find(pattern) != std::string::npos;
        for (const TiXmlElement* excepted : Children(rule, "excepted"))
            binds = binds && name.find(Text(excepted, "name_include_string")) == std::string::npos;
        if (!binds)
            continue;
        bound.insert(name);
        kinds.insert(kind);
    }
    EXPECT_LE(kinds.size(), 1U) << pattern << " binds objects of two kinds";
    return bound;
}

/// Each override of the rule is for another of its objects, as long as it has that many.
void ExpectOverridesBound(const TiXmlElement* rule, const std::set<std::string>& bound)
{
    std::set<std::string> overridden;
    for (const TiXmlElement* entity : Children(rule, "entity")) {
        if (bound.count(Text(entity, "name")) != 0)
            overridden.insert(Text(entity, "name"));
    }
    EXPECT_EQ(overridden.size(), std::min(bound.size(), Children(rule, "entity").size()));
}

struct CBindingCase
{
    const char* name;
    std::uint32_t objects;
    std::uint32_t rules;
    std::uint32_t hitPercent;
    std::uint32_t overlap;
    std::uint32_t excepted;
};

void ExpectBindsAsAsked(const CBindingCase& row)
{
    CKvInputParameters parameters;
    parameters.objects = row.objects;
    parameters.rules = row.rules;
    parameters.hitPercent = row.hitPercent;
    parameters.overlap = row.overlap;
    parameters.exceptedPerRule = row.excepted;
    const CInputs inputs = Generate(parameters);
    TiXmlDocument level;
    TiXmlDocument rules;
    ASSERT_NO_FATAL_FAILURE(Parse(inputs.level, level, "level"));
    ASSERT_NO_FATAL_FAILURE(Parse(inputs.rules, rules, "game_rule_list"));

    const auto objects = Objects(level.RootElement());
    EXPECT_EQ(objects.size(), row.objects);
    std::map<std::string, std::uint32_t> rulesOfObject;
    std::set<std::string> patterns;
    for (const TiXmlElement* rule : Children(rules.RootElement(), "fsm_create")) {
        patterns.insert(Text(rule, "name_include_string"));
        const std::set<std::string> bound = Bound(rule, objects);
        for (const std::string& name : bound)
            ++rulesOfObject[name];
        ExpectOverridesBound(rule, bound);
    }
    if (row.overlap <= 12) {
        EXPECT_EQ(patterns.size(), Children(rules.RootElement(), "fsm_create").size());
    }
    EXPECT_NEAR(static_cast<double>(rulesOfObject.size()), row.objects * row.hitPercent / 100.0,
                kKvObjectKinds.size());
    for (const auto& [name, count] : rulesOfObject)
        EXPECT_EQ(count, row.overlap) << name;
}

TEST(BenchInputs, AreTheSameBytesOnEveryMachine)
{
    CKvInputParameters parameters = Small();
    const std::string bytes = Generate(parameters).All();
    EXPECT_EQ(bytes, Generate(parameters).All());
    // Figures from before and after a change of this number do not compare.
    EXPECT_EQ(Hash(bytes), 0x5C595072E13F053CU);

    parameters.seed = 2;
    EXPECT_NE(bytes, Generate(parameters).All());
}

TEST(BenchInputs, RulesBindAsTheParametersSay)
{
    const CBindingCase cases[] = {
        {"usual", 1000, 30, 30, 1, 1},
        {"every object, ten rules each", 400, 200, 100, 10, 0},
        {"nothing to bind", 200, 20, 0, 1, 2},
        {"more rules than objects", 100, 500, 100, 1, 0},
        {"groups of one to three digits", 3000, 400, 50, 3, 1},
        {"patterns cut as short as they get", 900, 2000, 50, 20, 0},
        {"no rules", 50, 0, 0, 1, 1},
    };
    for (const CBindingCase& row : cases) {
        SCOPED_TRACE(row.name);
        ExpectBindsAsAsked(row);
    }
}

TEST(BenchInputs, TemplatesIncludeOnlyWhatCameBefore)
{
    const CInputs inputs = Generate(Small());
    std::set<std::string> known;
    for (const std::string& file : {inputs.firstTemplates, inputs.secondTemplates}) {
        TiXmlDocument templates;
        ASSERT_NO_FATAL_FAILURE(Parse(file, templates, "template_list"));
        for (const TiXmlElement* item : Children(templates.RootElement(), "template")) {
            for (const TiXmlElement* included : Children(item, "template"))
                EXPECT_EQ(known.count(Text(included, "name")), 1U);
            EXPECT_TRUE(known.insert(Text(item, "name")).second);
        }
    }
    EXPECT_EQ(known.size(), Small().templates);

    TiXmlDocument rules;
    ASSERT_NO_FATAL_FAILURE(Parse(inputs.rules, rules, "game_rule_list"));
    for (const TiXmlElement* rule : Children(rules.RootElement(), "fsm_create")) {
        for (const TiXmlElement* included : Children(rule, "template"))
            EXPECT_EQ(known.count(Text(included, "name")), 1U);
    }
}

TEST(BenchInputs, AnAbsentFolderIsNoticed)
{
    CKvInputPaths paths;
    EXPECT_FALSE(KvGenerateInputs(Small(), "/absent/folder", paths));
}

}  // namespace
