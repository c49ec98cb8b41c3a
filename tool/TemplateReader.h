// Reads templates and the parts that rules share with them from their documents.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "core/KvSaltedHash.h"
#include "tool/TemplateObject.h"

class CKvScriptTreeNode;

/// All templates in the order in which they were read, with a look-up by name.
///
/// Templates that include each other double at each line, so that a few lines could fill any
/// memory. Two limits stop that; what documents spell out themselves is bounded by their size.
class CTemplateList
{
public:
    /// The most parameters and sub-objects of one template, nested and included ones counted.
    static constexpr std::int64_t kMaxContent = 1'000'000;

    /// The most parameters, their values and sub-objects that all inclusions of a run may copy.
    static constexpr std::int64_t kMaxIncluded = 10'000'000;

    struct CEntry
    {
        CTemplateObject object;

        /// Its parameters, their values and sub-objects, nested ones counted.
        std::int64_t includedCount = 0;
    };

    /// Errors: false, with nothing added, when the template exceeds kMaxContent.
    [[nodiscard]] bool Add(CTemplateObject&& object);

    /// The last template whose name is equal, case and all; or null.
    const CEntry* Find(const TKvString<char>& name) const;

    /// Counts one more inclusion. False once all of them exceed kMaxIncluded.
    [[nodiscard]] bool CountInclusion(const CEntry& included);

private:
    CKvArray<CEntry> m_entries;
    std::unordered_map<std::string, int, CKvSaltedHash> m_lastOfName;
    std::int64_t m_included = 0;
};

/// Reads the children "template" of a "template_list" root, each of which can include those before.
///
/// Errors: false after one line on standard error when a template exceeds a limit of the list.
[[nodiscard]] bool ReadTemplateList(const CKvScriptTreeNode& root, CTemplateList& templates);

/// Reads a node "template" or "sub_object" with all that it holds and includes.
///
/// Errors: nothing when its inclusions exceed the list's limit.
std::optional<CTemplateObject> ReadTemplateObject(const CKvScriptTreeNode& node,
                                                  CTemplateList& templates);

/// Reads a node "parameter": a single value from its attribute "value", else a list with the
/// "value" of each child.
CTemplateParameter ReadTemplateParameter(const CKvScriptTreeNode& node);

/// Appends copies of the parameters and sub-objects of the template that a node "template" names;
/// an unknown name adds nothing.
///
/// Errors: false, with nothing appended, when the inclusions exceed the list's limit.
[[nodiscard]] bool IncludeTemplate(const CKvScriptTreeNode& node, CTemplateList& templates,
                                   CKvArray<CTemplateParameter>& parameters,
                                   CKvArray<CTemplateObject>& subObjects);
