#include "bench/KvRulesWriter.h"

#include <algorithm>
#include <cstdint>

#include "bench/KvBenchRandom.h"
#include "bench/KvParameterWriter.h"
#include "bench/KvTemplatesWriter.h"
#include "bench/KvXmlWriter.h"

namespace {

constexpr std::uint32_t kTemplateEvery = 2;
constexpr std::uint32_t kSubObjectEvery = 3;

void WriteExcepted(CKvXmlWriter& xml, std::uint32_t rule, std::uint32_t count)
{
    for (std::uint32_t i = 0; i < count; ++i) {
        xml.Begin("excepted");
        xml.Attribute("name_include_string", CKvInputPlan::ExceptedText(rule, i));
        xml.End();
    }
}

/// Each overridden object gets a value of its own for one of the rule's parameters.
void WriteOverrides(CKvXmlWriter& xml, CKvBenchRandom& random, const CKvInputPlan& plan,
                    const CKvInputParameters& parameters, std::uint32_t rule)
{
    for (std::uint32_t i = 0; i < parameters.overridesPerRule; ++i) {
        xml.Begin("entity");
        xml.Attribute("name", plan.BoundName(rule, i));
        KvWriteParameter(xml, random, i % std::max(parameters.parametersPerRule, 1U));
        xml.End();
    }
}

void WriteRule(CKvXmlWriter& xml, CKvBenchRandom& random, const CKvInputPlan& plan,
               const CKvInputParameters& parameters, std::uint32_t rule)
{
    const bool global = CKvInputPlan::IsGlobal(rule);
    xml.Begin(global ? "simple_fsm_create" : "fsm_create");
    xml.Attribute("fsm_name", "logic_" + std::to_string(rule));
    if (!global) {
        xml.Attribute("name_include_string", plan.Pattern(rule));
        WriteExcepted(xml, rule, parameters.exceptedPerRule);
    }
    if (parameters.templates > 0 && rule % kTemplateEvery == 0) {
        xml.Begin("template");
        const auto index = static_cast<std::uint32_t>(random.Below(parameters.templates));
        xml.Attribute("name", KvTemplateName(index));
        xml.End();
    }
    for (std::uint32_t i = 0; i < parameters.parametersPerRule; ++i)
        KvWriteParameter(xml, random, i);
    if (rule % kSubObjectEvery == 0) {
        xml.Begin("sub_object");
        xml.Attribute("name", "start_state");
        KvWriteParameter(xml, random, parameters.parametersPerRule);
        xml.End();
    }
    if (!global)
        WriteOverrides(xml, random, plan, parameters, rule);
    xml.End();
}

}  // namespace

bool KvWriteRules(const CKvInputPlan& plan, const CKvInputParameters& parameters,
                  const std::string& path)
{
    CKvXmlWriter xml(path);
    CKvBenchRandom random(parameters.seed);
    xml.Begin("game_rule_list");
    for (std::uint32_t rule = 0; rule < parameters.rules; ++rule)
        WriteRule(xml, random, plan, parameters, rule);
    xml.End();
    return xml.Close();
}
