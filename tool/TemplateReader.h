// Reads templates and the parts that rules share with them from their documents.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "tool/TemplateObject.h"

class CKvScriptTreeNode;

/// Counts what one template or one rule gathers. Templates that include each other double at each
/// line, so that a few lines could fill any memory.
class CContentCount
{
public:
    /// The most parameters and sub-objects, nested and included ones counted.
    static constexpr std::int64_t kMax = 1'000'000;

    /// False once the count exceeds kMax.
    [[nodiscard]] bool Add(std::int64_t count)
    {
        m_count += count;
        return m_count <= kMax;
    }
    std::int64_t Get() const { return m_count; }

private:
    std::int64_t m_count = 0;
};

/// All templates in the order in which they were read, with a look-up by name.
class CTemplateList
{
public:
    struct CEntry
    {
        CTemplateObject object;
        std::int64_t contentCount = 0;
    };

    void Add(CTemplateObject&& object, std::int64_t contentCount);

    /// The last template whose name is equal, case and all; or null.
    const CEntry* Find(const TKvString<char>& name) const;

private:
    CKvArray<CEntry> m_entries;
    std::unordered_map<std::string, int> m_lastOfName;
};

/// Reads the children "template" of a "template_list" root, each of which can include those before.
///
/// Errors: false after one line on standard error when a template holds more than
///         CContentCount::kMax parameters and sub-objects.
[[nodiscard]] bool ReadTemplateList(const CKvScriptTreeNode& root, CTemplateList& templates);

/// Reads a node "template" or "sub_object" with all that it holds and includes.
///
/// Errors: nothing when \a count exceeds its maximum.
std::optional<CTemplateObject> ReadTemplateObject(const CKvScriptTreeNode& node,
                                                  const CTemplateList& templates,
                                                  CContentCount& count);

CTemplateParameter ReadTemplateParameter(const CKvScriptTreeNode& node);

/// Appends copies of the parameters and sub-objects of the template that a node "template" names;
/// an unknown name adds nothing.
///
/// Errors: false, with nothing appended, when \a count exceeds its maximum.
[[nodiscard]] bool IncludeTemplate(const CKvScriptTreeNode& node, const CTemplateList& templates,
                                   CKvArray<CTemplateParameter>& parameters,
                                   CKvArray<CTemplateObject>& subObjects, CContentCount& count);
