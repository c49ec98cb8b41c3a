#include "bench/KvInputPlan.h"

#include <algorithm>

#include "bench/KvBenchRandom.h"

namespace {

/// Share of each kind among the objects, in percent.
constexpr std::array<std::uint32_t, kKvObjectKinds.size()> kSharePercent = {60, 10, 8, 10, 12};

constexpr std::array<CKvObjectKindNames, kKvObjectKinds.size()> kKindNames = {{
    {"entity_list", "entity", "name"},
    {"dummy_aabb3_list", "dummy_aabb3", "name"},
    {"dummy_sphere_list", "dummy_sphere", "name"},
    {"particle_system_list", "particle_system", "instancename"},
    {"light_list", "light", "name"},
}};

constexpr std::array<std::string_view, kKvObjectKinds.size()> kPrefixes = {"ent", "box", "sph",
                                                                           "fx", "lit"};

constexpr std::size_t kWords = 8;
constexpr std::array<std::array<std::string_view, kWords>, kKvObjectKinds.size()> kThings = {{
    {"door", "crate", "guard", "barrel", "lever", "statue", "cart", "chest"},
    {"trigger", "spawn", "camera", "water", "exit", "checkpoint", "arena", "ladder"},
    {"noise", "pickup", "aggro", "dialog", "heal", "alarm", "focus", "wind"},
    {"smoke", "sparks", "dust", "fire", "steam", "leaves", "rain", "embers"},
    {"torch", "lamp", "moon", "window", "neon", "candle", "spot", "glow"},
}};
constexpr std::array<std::string_view, kWords> kPlaces = {"cellar",  "yard", "tower", "hall",
                                                          "harbour", "mine", "attic", "bridge"};

/// Kinds of ten groups in a row: the shares of the kinds as near as ten allow.
constexpr std::uint32_t kCycle = 10;
constexpr std::array<EKvObjectKind, kCycle> kGroupKinds = {
    EKvObjectKind::Entity,         EKvObjectKind::DummyAabb3,  EKvObjectKind::Light,
    EKvObjectKind::ParticleSystem, EKvObjectKind::DummySphere, EKvObjectKind::Entity,
    EKvObjectKind::Entity,         EKvObjectKind::Entity,      EKvObjectKind::Entity,
    EKvObjectKind::Entity};

constexpr std::uint32_t kGlobalRuleEvery = 10;
constexpr std::uint32_t kExceptedMissEvery = 16;
constexpr std::string_view kExceptedTag = "hidden_";

std::size_t Index(EKvObjectKind kind)
{
    return static_cast<std::size_t>(kind);
}

std::uint32_t PortionOf(std::uint32_t total, std::uint32_t percent)
{
    return static_cast<std::uint32_t>(std::uint64_t{total} * percent / 100);
}

/// How many of the groups before \a group, or of the whole ten when it is kCycle, have this kind.
std::uint32_t GroupsBefore(EKvObjectKind kind, std::uint32_t group)
{
    const auto* end = kGroupKinds.begin() + group;
    return static_cast<std::uint32_t>(std::count(kGroupKinds.begin(), end, kind));
}

/// The groups of a kind among the first \a groups.
std::uint32_t GroupsOfKind(EKvObjectKind kind, std::uint32_t groups)
{
    return groups / kCycle * GroupsBefore(kind, kCycle) + GroupsBefore(kind, groups % kCycle);
}

/// The number of the \a ordinal -th group of this kind.
std::uint32_t GroupNumber(EKvObjectKind kind, std::uint32_t ordinal)
{
    const std::uint32_t inCycle = GroupsBefore(kind, kCycle);
    std::uint32_t place = 0;
    for (std::uint32_t left = ordinal % inCycle;; ++place) {
        if (kGroupKinds[place] == kind && left-- == 0)
            break;
    }
    return ordinal / inCycle * kCycle + place;
}

/// "ent_door_cellar_": the words of a group or of a missed object.
std::string Words(EKvObjectKind kind, std::uint64_t seed)
{
    CKvBenchRandom random(seed);
    std::string words(kPrefixes[Index(kind)]);
    words.append("_").append(kThings[Index(kind)][random.Below(kWords)]);
    words.append("_").append(kPlaces[random.Below(kWords)]).append("_");
    return words;
}

/// Rules with a pattern among the rules before \a rule.
std::uint32_t BindingRulesBefore(std::uint32_t rule)
{
    return rule - rule / kGlobalRuleEvery;
}

}  // namespace

const CKvObjectKindNames& KvObjectKindNames(EKvObjectKind kind)
{
    return kKindNames[Index(kind)];
}

CKvInputPlan::CKvInputPlan(const CKvInputParameters& parameters)
    : m_seed(parameters.seed),
      m_groups((BindingRulesBefore(parameters.rules) + parameters.overlap - 1) /
               parameters.overlap),
      m_exceptsSome(parameters.exceptedPerRule > 0)
{
    std::uint32_t percentBefore = 0;
    for (const EKvObjectKind kind : kKvObjectKinds) {
        CKindCounts& counts = m_counts[Index(kind)];
        const std::uint32_t percent = percentBefore + kSharePercent[Index(kind)];
        counts.objects =
            PortionOf(parameters.objects, percent) - PortionOf(parameters.objects, percentBefore);
        counts.groups = GroupsOfKind(kind, m_groups);
        if (counts.groups > 0)
            counts.hits = PortionOf(counts.objects, parameters.hitPercent);
        percentBefore = percent;
    }
}

std::uint32_t CKvInputPlan::ObjectCount(EKvObjectKind kind) const
{
    return Counts(kind).objects;
}

std::string CKvInputPlan::ObjectName(EKvObjectKind kind, std::uint32_t index) const
{
    const CKindCounts& counts = Counts(kind);
    // Spreads the hits evenly: so many objects of every prefix of the list are hits.
    const auto hitsUpTo = [&counts](std::uint64_t objects) {
        return static_cast<std::uint32_t>(objects * counts.hits / counts.objects);
    };
    const std::uint32_t hit = hitsUpTo(index);
    if (hitsUpTo(std::uint64_t{index} + 1) > hit)
        return HitName(kind, hit);

    const std::uint32_t miss = index - hit;
    if (m_exceptsSome && counts.groups > 0 && miss % kExceptedMissEvery == 0) {
        const std::uint32_t ordinal = miss / kExceptedMissEvery % counts.groups;
        return GroupTag(GroupNumber(kind, ordinal)).append(kExceptedTag) + std::to_string(miss);
    }
    const std::uint64_t wordSeed = (std::uint64_t{m_seed} << 32U) + miss;
    return Words(kind, wordSeed) + std::to_string(miss);
}

bool CKvInputPlan::IsGlobal(std::uint32_t rule)
{
    return rule % kGlobalRuleEvery == kGlobalRuleEvery - 1;
}

std::string CKvInputPlan::Pattern(std::uint32_t rule) const
{
    const std::uint32_t binding = BindingRulesBefore(rule);
    const std::uint32_t group = binding % m_groups;
    const std::uint32_t variant = binding / m_groups;

    const std::string tag = GroupTag(group);
    const std::size_t shortest = std::to_string(group).size() + 2;
    // Each rule of a group leaves out one letter more at the front.
    return tag.substr(variant % (tag.size() - shortest + 1));
}

std::string CKvInputPlan::ExceptedText(std::uint32_t rule, std::uint32_t index)
{
    if (index == 0)
        return std::string("_").append(kExceptedTag);
    return "_retired_" + std::to_string(rule) + "_" + std::to_string(index);
}

std::string CKvInputPlan::BoundName(std::uint32_t rule, std::uint32_t index) const
{
    const std::uint32_t group = BindingRulesBefore(rule) % m_groups;
    const EKvObjectKind kind = kGroupKinds[group % kCycle];
    return HitName(kind, GroupsOfKind(kind, group) + index * Counts(kind).groups);
}

const CKvInputPlan::CKindCounts& CKvInputPlan::Counts(EKvObjectKind kind) const
{
    return m_counts[Index(kind)];
}

std::string CKvInputPlan::GroupTag(std::uint32_t group) const
{
    const std::uint64_t wordSeed = (std::uint64_t{m_seed} << 32U) + ~group;
    return Words(kGroupKinds[group % kCycle], wordSeed) + std::to_string(group) + "_";
}

std::string CKvInputPlan::HitName(EKvObjectKind kind, std::uint32_t hit) const
{
    return GroupTag(GroupNumber(kind, hit % Counts(kind).groups)) + std::to_string(hit);
}
