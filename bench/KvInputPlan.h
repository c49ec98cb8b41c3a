// Which rule binds which object: the names of the level and the patterns of the rules, computed
// from the parameters so that the writers of the level and of the rules agree without sharing
// lists.
//
// Rules are dealt to groups, one group binds objects of one kind. A hit object's name holds its
// group between underscores ("ent_door_cellar_17_205"), and every pattern ends with such a group
// ("door_cellar_17_"); serial numbers end a name and thus never look like a group.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "bench/KvInputParameters.h"

enum class EKvObjectKind : std::uint32_t
{
    Entity,
    DummyAabb3,
    DummySphere,
    ParticleSystem,
    Light
};

inline constexpr std::array kKvObjectKinds = {EKvObjectKind::Entity, EKvObjectKind::DummyAabb3,
                                              EKvObjectKind::DummySphere,
                                              EKvObjectKind::ParticleSystem, EKvObjectKind::Light};

/// How a kind of object stands in the level.
struct CKvObjectKindNames
{
    std::string_view list;
    std::string_view item;
    std::string_view nameAttribute;
};

const CKvObjectKindNames& KvObjectKindNames(EKvObjectKind kind);

class CKvInputPlan
{
public:
    explicit CKvInputPlan(const CKvInputParameters& parameters);

    std::uint32_t ObjectCount(EKvObjectKind kind) const;

    /// The name of the \a index -th object of its kind in document order. Names are unique.
    std::string ObjectName(EKvObjectKind kind, std::uint32_t index) const;

    /// True for a rule without a pattern, whose state machine is bound to no object.
    static bool IsGlobal(std::uint32_t rule);

    /// The text by which a rule that is not global binds. Patterns of rules that overlap differ
    /// (for the first dozen of them; then they repeat).
    std::string Pattern(std::uint32_t rule) const;

    /// The \a index -th excepted text of a rule: the first leaves out some objects that the pattern
    /// would bind (they count as missed), the others are found in no name.
    static std::string ExceptedText(std::uint32_t rule, std::uint32_t index);

    /// The \a index -th object bound by a rule that is not global, or a name that no object has
    /// when the rule binds fewer.
    std::string BoundName(std::uint32_t rule, std::uint32_t index) const;

private:
    struct CKindCounts
    {
        std::uint32_t objects = 0;
        std::uint32_t hits = 0;
        std::uint32_t groups = 0;
    };

    const CKindCounts& Counts(EKvObjectKind kind) const;
    std::string GroupTag(std::uint32_t group) const;
    std::string HitName(EKvObjectKind kind, std::uint32_t hit) const;

    std::uint32_t m_seed;
    std::uint32_t m_groups;
    bool m_exceptsSome;
    std::array<CKindCounts, kKvObjectKinds.size()> m_counts;
};
