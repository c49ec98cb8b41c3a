#include "bench/KvStrainInputs.h"

#include <cstdio>

#include "bench/KvXmlWriter.h"

namespace {

/// Objects with a name alone, all bound: each is looked up in what grows, so that the objects and
/// what grows together show a search from the front as an exponent of 2.
CKvInputParameters BareObjects(std::uint32_t objects)
{
    CKvInputParameters parameters;
    parameters.objects = objects;
    parameters.bareObjects = 1;
    parameters.hitPercent = 100;
    parameters.rules = 1;
    parameters.templates = 0;
    parameters.exceptedPerRule = 1;
    parameters.overridesPerRule = 0;
    return parameters;
}

CKvInputParameters Excepted(std::uint32_t size, bool strained)
{
    CKvInputParameters parameters = BareObjects(2 * size);
    parameters.exceptedPerRule = strained ? size : 1;
    return parameters;
}

CKvInputParameters Overrides(std::uint32_t size, bool strained)
{
    CKvInputParameters parameters = BareObjects(2 * size);
    parameters.overridesPerRule = strained ? size : 0;
    return parameters;
}

CKvInputParameters Templates(std::uint32_t size, bool strained)
{
    CKvInputParameters parameters = BareObjects(0);
    parameters.rules = size;
    parameters.templates = strained ? size : 0;
    return parameters;
}

constexpr CKvStrain kStrains[] = {
    {"11a", "excepted", 1'000, Excepted},
    {"11b", "overrides", 10'000, Overrides},
    {"11c", "templates", 10'000, Templates},
};

bool WriteSiblingLevel(std::uint32_t siblings, const std::string& path)
{
    CKvXmlWriter xml(path);
    const auto writeSiblings = [&xml](std::uint32_t count) {
        for (std::uint32_t i = 0; i < count; ++i) {
            xml.Begin("other");
            xml.End();
        }
    };
    xml.Begin("level");
    xml.Begin("entity_list");
    writeSiblings(siblings / 2);
    xml.Begin("entity");
    xml.Attribute("name", "ent_door_1");
    xml.End();
    writeSiblings(siblings - siblings / 2);
    xml.End();
    xml.End();
    return xml.Close();
}

}  // namespace

std::span<const CKvStrain> KvStrains()
{
    return kStrains;
}

bool KvWriteSiblings(std::uint32_t siblings, const std::string& parent, const std::string& name,
                     CKvInputPaths& inputs)
{
    CKvInputParameters parameters = BareObjects(0);
    parameters.rules = 0;
    if (!KvPrepareInputs(parameters, parent, name, inputs))
        return false;
    if (WriteSiblingLevel(siblings, inputs.level))
        return true;
    std::fprintf(stderr, "bench: cannot write '%s'\n", inputs.level.c_str());
    return false;
}
