#include "bench/KvLevelWriter.h"

#include <string_view>

#include "bench/KvBenchRandom.h"
#include "bench/KvXmlWriter.h"

namespace {

constexpr std::int64_t kOne = 1'000'000;
constexpr std::string_view kAxes[] = {"x", "y", "z", "w"};
constexpr std::string_view kColours[] = {"r", "g", "b"};
constexpr std::string_view kSurfaces[] = {"stone", "timber", "rust", "cloth", "glass", "moss"};

/// A number in millionths from \a lowest to below \a highest.
std::int64_t Between(CKvBenchRandom& random, std::int64_t lowest, std::int64_t highest)
{
    return lowest +
           static_cast<std::int64_t>(random.Below(static_cast<std::uint64_t>(highest - lowest)));
}

void WriteVector(CKvXmlWriter& xml, CKvBenchRandom& random, std::string_view element,
                 std::size_t components, std::int64_t lowest, std::int64_t highest)
{
    xml.Begin(element);
    for (std::size_t i = 0; i < components; ++i)
        xml.AttributeMillionths(kAxes[i], Between(random, lowest, highest));
    xml.End();
}

void WritePlacement(CKvXmlWriter& xml, CKvBenchRandom& random)
{
    WriteVector(xml, random, "position", 3, -2000 * kOne, 2000 * kOne);
    WriteVector(xml, random, "rotation", 4, -kOne, kOne);
    WriteVector(xml, random, "scale", 3, kOne / 2, 2 * kOne);
}

std::string Numbered(std::string_view text, std::uint64_t number)
{
    return std::string(text) + std::to_string(number);
}

void WriteEntity(CKvXmlWriter& xml, CKvBenchRandom& random)
{
    xml.Attribute("resource", Numbered("meshes\\furniture_", random.Below(900)) + ".mesh");
    xml.Attribute("visible", random.Below(8) == 0 ? "false" : "true");
    WritePlacement(xml, random);
    xml.Begin("material");
    const std::string_view surface = kSurfaces[random.Below(std::size(kSurfaces))];
    xml.Attribute("name", Numbered(surface, random.Below(60)));
    xml.AttributeMillionths("gloss", Between(random, 0, kOne));
    xml.End();
}

void WriteDummyAabb3(CKvXmlWriter& xml, CKvBenchRandom& random)
{
    WritePlacement(xml, random);
    WriteVector(xml, random, "min", 3, -9 * kOne, -kOne);
    WriteVector(xml, random, "max", 3, kOne, 9 * kOne);
}

void WriteDummySphere(CKvXmlWriter& xml, CKvBenchRandom& random)
{
    xml.Attribute("group", Numbered("squad_", random.Below(40)));
    WritePlacement(xml, random);
    xml.Begin("sphere");
    xml.AttributeMillionths("radius", Between(random, kOne / 4, 90 * kOne));
    xml.End();
}

void WriteParticleSystem(CKvXmlWriter& xml, CKvBenchRandom& random)
{
    xml.Attribute("resource", Numbered("particles\\effect_", random.Below(300)) + ".particle");
    WritePlacement(xml, random);
    xml.Begin("emitter");
    xml.Attribute("count", std::to_string(random.Below(4000)));
    xml.AttributeMillionths("lifetime", Between(random, kOne / 10, 20 * kOne));
    xml.End();
}

void WriteLight(CKvXmlWriter& xml, CKvBenchRandom& random)
{
    xml.Attribute("type", random.Below(4) == 0 ? "spot" : "omni");
    WritePlacement(xml, random);
    xml.Begin("colour");
    for (const std::string_view component : kColours)
        xml.AttributeMillionths(component, Between(random, 0, kOne));
    xml.End();
    xml.Begin("range");
    xml.AttributeMillionths("near", Between(random, 0, kOne));
    xml.AttributeMillionths("far", Between(random, 2 * kOne, 80 * kOne));
    xml.End();
}

void WriteBody(EKvObjectKind kind, CKvXmlWriter& xml, CKvBenchRandom& random)
{
    xml.Attribute("id", std::to_string(random.Below(10'000'000)));
    xml.Attribute("layer", Numbered("gameplay_", random.Below(40)));
    switch (kind) {
        case EKvObjectKind::Entity:
            return WriteEntity(xml, random);
        case EKvObjectKind::DummyAabb3:
            return WriteDummyAabb3(xml, random);
        case EKvObjectKind::DummySphere:
            return WriteDummySphere(xml, random);
        case EKvObjectKind::ParticleSystem:
            return WriteParticleSystem(xml, random);
        case EKvObjectKind::Light:
            return WriteLight(xml, random);
    }
}

void WriteEnvironment(CKvXmlWriter& xml)
{
    xml.Begin("environment");
    xml.Attribute("sky", "skies\\overcast.texture");
    xml.AttributeMillionths("fog", kOne / 50);
    xml.End();
}

}  // namespace

bool KvWriteLevel(const CKvInputPlan& plan, const CKvInputParameters& parameters,
                  const std::string& path)
{
    CKvXmlWriter xml(path);
    CKvBenchRandom random(parameters.seed);
    xml.Begin("level");
    xml.Attribute("version", "3");
    WriteEnvironment(xml);
    for (const EKvObjectKind kind : kKvObjectKinds) {
        const CKvObjectKindNames& names = KvObjectKindNames(kind);
        xml.Comment(names.list);
        xml.Begin(names.list);
        for (std::uint32_t index = 0; index < plan.ObjectCount(kind); ++index) {
            xml.Begin(names.item);
            xml.Attribute(names.nameAttribute, plan.ObjectName(kind, index));
            if (parameters.bareObjects == 0)
                WriteBody(kind, xml, random);
            xml.End();
        }
        xml.End();
    }
    xml.End();
    return xml.Close();
}
