#include "bench/KvTemplatesWriter.h"

#include "bench/KvBenchRandom.h"
#include "bench/KvParameterWriter.h"
#include "bench/KvXmlWriter.h"

namespace {

/// Every so many templates one includes nothing and is included by those that follow it.
constexpr std::uint32_t kFamilySize = 4;

/// Templates' own parameters are numbered from here, apart from those of rules.
constexpr std::uint32_t kFirstParameter = 100;

void WriteTemplate(CKvXmlWriter& xml, CKvBenchRandom& random, std::uint32_t index)
{
    const std::uint32_t place = index % kFamilySize;
    const std::uint32_t parameter = kFirstParameter + index;
    xml.Begin("template");
    xml.Attribute("name", KvTemplateName(index));
    if (place != 0) {
        xml.Begin("template");
        xml.Attribute("name", KvTemplateName(index - place));
        xml.End();
    }
    KvWriteParameter(xml, random, parameter);
    if (place != 0) {
        xml.Begin("sub_object");
        xml.Attribute("name", "action");
        KvWriteParameter(xml, random, parameter + 1);
        xml.Begin("sub_object");
        xml.Attribute("name", "condition");
        KvWriteParameter(xml, random, parameter + 2);
        xml.End();
        xml.End();
    }
    xml.End();
}

}  // namespace

std::string KvTemplateName(std::uint32_t index)
{
    return "behaviour_" + std::to_string(index);
}

bool KvWriteTemplates(std::uint32_t first, std::uint32_t end, std::uint32_t seed,
                      const std::string& path)
{
    CKvXmlWriter xml(path);
    CKvBenchRandom random((std::uint64_t{seed} << 32U) + first);
    xml.Begin("template_list");
    for (std::uint32_t index = first; index < end; ++index)
        WriteTemplate(xml, random, index);
    xml.End();
    return xml.Close();
}
