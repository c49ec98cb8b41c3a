#include "bench/KvParameterWriter.h"

#include <string>
#include <string_view>

namespace {

struct CParameterSort
{
    std::string_view word;
    std::string_view type;
};

constexpr CParameterSort kSorts[] = {
    {"speed", "float"}, {"count", "int"},      {"sound", "string"}, {"delay", "float"},
    {"armed", "bool"},  {"waypoints", "list"}, {"score", "int"},    {"radius", "float"},
};
constexpr std::uint32_t kListLength = 3;

void WriteValue(CKvXmlWriter& xml, CKvBenchRandom& random, std::string_view type)
{
    if (type == "float")
        return xml.AttributeMillionths("value",
                                       static_cast<std::int64_t>(random.Below(50'000'000)));
    if (type == "int")
        return xml.Attribute("value", std::to_string(random.Below(1000)));
    if (type == "bool")
        return xml.Attribute("value", random.Below(2) == 0 ? "false" : "true");
    xml.Attribute("value", "sound_" + std::to_string(random.Below(500)));
}

}  // namespace

void KvWriteParameter(CKvXmlWriter& xml, CKvBenchRandom& random, std::uint32_t index)
{
    const CParameterSort& sort = kSorts[index % std::size(kSorts)];
    xml.Begin("parameter");
    xml.Attribute("name", std::string(sort.word) + "_" + std::to_string(index));
    if (sort.type != "list") {
        xml.Attribute("type", sort.type);
        WriteValue(xml, random, sort.type);
    } else {
        xml.Attribute("type", "int");
        for (std::uint32_t i = 0; i < kListLength; ++i) {
            xml.Begin("element");
            WriteValue(xml, random, "int");
            xml.End();
        }
    }
    xml.End();
}
