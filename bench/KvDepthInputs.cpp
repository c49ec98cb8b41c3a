#include "bench/KvDepthInputs.h"

#include <cstdio>
#include <string_view>

#include "bench/KvBenchFile.h"
#include "bench/KvTemporaryFolder.h"

namespace {

std::string Repeated(std::string_view text, std::uint32_t count)
{
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (std::uint32_t i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

std::string SubObjects(std::uint32_t depth)
{
    return Repeated("<sub_object name=\"s\">", depth) + Repeated("</sub_object>", depth);
}

std::string Level(std::uint32_t depth)
{
    std::string level = "<level><entity_list><entity name=\"door_1\">";
    level += Repeated("<a>", depth);
    level += Repeated("</a>", depth);
    level += "</entity></entity_list></level>";
    return level;
}

}  // namespace

bool KvWriteDeepInputs(EKvDeepDocument deep, std::uint32_t depth, const std::string& parent,
                       const std::string& name, CKvInputPaths& inputs)
{
    const auto depthOf = [deep, depth](EKvDeepDocument document) {
        return document == deep ? depth : 0;
    };
    const std::string folder = KvMakeFolder(parent, name);
    inputs.level = folder + "/deep.level";
    inputs.rules = folder + "/deep.gamerules";
    inputs.firstTemplates = folder + "/deep.template";
    inputs.secondTemplates.clear();

    const std::string rules =
        "<game_rule_list><simple_fsm_create fsm_name=\"f\">"
        "<template name=\"t\"/>" +
        SubObjects(depthOf(EKvDeepDocument::Rules)) + "</simple_fsm_create></game_rule_list>";
    const std::string templates = "<template_list><template name=\"t\">" +
                                  SubObjects(depthOf(EKvDeepDocument::Template)) +
                                  "</template></template_list>";
    if (!folder.empty() && KvWriteWholeFile(inputs.level, Level(depthOf(EKvDeepDocument::Level))) &&
        KvWriteWholeFile(inputs.rules, rules) && KvWriteWholeFile(inputs.firstTemplates, templates))
        return true;
    std::fprintf(stderr, "bench: cannot write the deep inputs '%s'\n", name.c_str());
    return false;
}
