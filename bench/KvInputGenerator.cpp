#include "bench/KvInputGenerator.h"

#include "bench/KvLevelWriter.h"
#include "bench/KvRulesWriter.h"
#include "bench/KvTemplatesWriter.h"

bool KvGenerateInputs(const CKvInputParameters& parameters, const std::string& folder,
                      CKvInputPaths& paths)
{
    paths.level = folder + "/bench.level";
    paths.rules = folder + "/bench.gamerules";
    paths.firstTemplates = folder + "/first.template";
    paths.secondTemplates = folder + "/second.template";

    const CKvInputPlan plan(parameters);
    const std::uint32_t half = parameters.templates - parameters.templates / 2;
    return KvWriteLevel(plan, parameters, paths.level) &&
           KvWriteRules(plan, parameters, paths.rules) &&
           KvWriteTemplates(0, half, parameters.seed, paths.firstTemplates) &&
           KvWriteTemplates(half, parameters.templates, parameters.seed, paths.secondTemplates);
}
