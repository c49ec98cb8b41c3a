#include "project/KvProject.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/KvId.h"
#include "core/KvNumberText.h"
#include "core/KvOutOfMemory.h"
#include "project/KvDocumentFile.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

using Texts = CKvArray<TKvString<char>>;

/// Of the files that are written. Files from this version on are read.
constexpr int kVersionMajor = 1;
constexpr int kVersionMinor = 1;
constexpr const char* kVersion = "1.1";

CKvIdentifier VersionId()
{
    return CKvIdentifier("project_version");
}

/// A version that does not consist of two parts counts as new enough.
bool IsTooOld(const CKvScriptTreeNode& root)
{
    const CKvScriptTreeAttribute* version = root.FindAttribute(VersionId());
    if (version == nullptr)
        return true;
    const std::string_view text(version->GetValue().GetText());
    const std::size_t dot = text.find('.');
    if (dot == std::string_view::npos || text.find('.', dot + 1) != std::string_view::npos)
        return false;
    const int major = kvStringToS32(text.data());
    const int minor = kvStringToS32(text.data() + dot + 1);
    return major != kVersionMajor ? major < kVersionMajor : minor < kVersionMinor;
}

void WriteVersion(CKvScriptTreeNode& root)
{
    const CKvScriptTreeAttribute* version = root.FindAttribute(VersionId());
    if (version != nullptr && version->GetValue() == kVersion)
        return;
    if (version != nullptr)
        root.RemoveAttribute(*version);
    root.AddAttribute(CKvScriptTreeAttribute(VersionId(), kVersion));
}

int FindText(const Texts& texts, const TKvString<char>& text)
{
    return static_cast<int>(std::find(texts.begin(), texts.end(), text) - texts.begin());
}

bool Contains(const Texts& texts, const TKvString<char>& text)
{
    return FindText(texts, text) < texts.GetCount();
}

CKvScriptTreeNode* FindOrAddChild(CKvScriptTreeNode& node, const CKvIdentifier& identifier)
{
    CKvScriptTreeNode* child = node.FindChild(identifier);
    return child != nullptr ? child : node.AddNewChild(identifier);
}

void DeleteChildren(CKvScriptTreeNode& node, const CKvIdentifier& identifier)
{
    CKvArray<CKvScriptTreeNode*> children;
    node.GetChildrenByIdArray(identifier, children);
    node.RemoveChildrenById(identifier);
    for (CKvScriptTreeNode* child : children)
        CKvScriptTreeNodeRelease()(child);
}

void AddExtensionNode(CKvScriptTreeNode& node, const TKvString<char>& extension)
{
    const KVID& id = KVID::GetSingleton();
    node.AddNewChild(id.extension)->AddAttribute(CKvScriptTreeAttribute(id.name, extension));
}

bool HasExtensionNode(const CKvScriptTreeNode& node, const TKvString<char>& extension)
{
    const KVID& id = KVID::GetSingleton();
    for (int i = 0; i < node.GetChildCount(); ++i) {
        const CKvScriptTreeNode& child = *node.GetChild(i);
        const CKvScriptTreeAttribute* name = child.FindAttribute(id.name);
        if (child.GetIdentifier() == id.extension && name != nullptr &&
            name->GetValue() == extension)
            return true;
    }
    return false;
}

}  // namespace

CKvProject::CKvProject(const TKvString<char>& file)
    : m_projectFile(file, true), m_settings(std::make_unique<CKvProjectSettingsGeneral>())
{
    SerializeFrom();
}

CKvProject::CKvProject(const TKvString<char>& name, const TKvString<char>& file,
                       const TKvString<char>& genericPath, const TKvString<char>& temporaryPath,
                       const TKvString<char>& icon, const TKvString<char>& splashScreen, int major,
                       int minor)
    : CKvProject(file)
{
    m_settings->SetProperty(CKvIdentifier("generalName"), &name);
    m_settings->SetProperty(CKvIdentifier("generalGeneric"), &genericPath);
    m_settings->SetProperty(CKvIdentifier("generalTmp"), &temporaryPath);
    m_settings->SetProperty(CKvIdentifier("generalIcon"), &icon);
    m_settings->SetProperty(CKvIdentifier("generalSplashscreen"), &splashScreen);
    m_settings->SetProperty(CKvIdentifier("generalMajor"), &major);
    m_settings->SetProperty(CKvIdentifier("generalMinor"), &minor);
}

CKvProject::~CKvProject() = default;

bool CKvProject::Initialize()
{
    m_settings = std::make_unique<CKvProjectSettingsGeneral>();
    return SerializeFrom();
}

bool CKvProject::Save()
{
    return SerializeTo();
}

void CKvProject::SetProjectFile(const TKvString<char>& file)
{
    m_projectFile = CKvFilePath(file, true);
}

CKvProjectSettings* CKvProject::FindGroupSettings(const CKvIdentifier& identifier) const
{
    if (m_settings->GetIdentifier() == identifier)
        return m_settings.get();
    return m_settings->FindChild(identifier);
}

bool CKvProject::SetProperty(const CKvIdentifier& group, const CKvIdentifier& key, void* value)
{
    CKvProjectSettings* settings = FindGroupSettings(group);
    return settings != nullptr && settings->SetProperty(key, value);
}

const TKvString<char>& CKvProject::GetProjectGenericPath() const
{
    return GetGeneralText("generalGeneric");
}

const TKvString<char>& CKvProject::GetProjectTempDirectory() const
{
    return GetGeneralText("generalTmp");
}

void CKvProject::GetRealGenericPath(TKvString<char>& out) const
{
    GetRealPath(GetProjectGenericPath(), out);
}

void CKvProject::GetRealTemporaryPath(TKvString<char>& out) const
{
    GetRealPath(GetProjectTempDirectory(), out);
}

void CKvProject::GetRealCompiledPath(TKvString<char>& out) const
{
    GetRealTemporaryPath(out);
    out += "Windows\\DX9\\";
}

void CKvProject::GetProjectLanguagesArray(CKvArray<CKvIdentifier>& out) const
{
    for (const char* language : {"English", "French", "Italian", "German", "Spanish"}) {
        const CKvIdentifier key(language);
        CKvReflectionInformation field;
        if (m_settings->FindReflectionInformation(key, field) &&
            field.GetValueBool(m_settings.get()))
            out.Add(key);
    }
}

bool CKvProject::ContainsExtension(const TKvString<char>& extension) const
{
    return Contains(m_extensions, extension);
}

void CKvProject::AddExtension(const TKvString<char>& extension)
{
    m_extensions.Add(extension);
    SaveExtensions();
}

void CKvProject::AddExtensions(const Texts& extensions)
{
    Texts added;
    for (const TKvString<char>& extension : extensions) {
        if (!ContainsExtension(extension) && !Contains(added, extension))
            added.Add(extension);
    }
    for (const TKvString<char>& extension : added)
        m_extensions.Add(extension);
    EditFile([&](CKvScriptTreeNode& root) {
        CKvScriptTreeNode* node = FindOrAddChild(root, KVID::GetSingleton().extensions);
        for (const TKvString<char>& extension : added)
            AddExtensionNode(*node, extension);
    });
}

void CKvProject::RemoveExtension(const TKvString<char>& extension)
{
    const int index = FindText(m_extensions, extension);
    if (index < m_extensions.GetCount())
        m_extensions.RemoveAt(index);
    SaveExtensions();
}

void CKvProject::RemoveAllExtensions()
{
    m_extensions.Clear();
    EditFile(
        [](CKvScriptTreeNode& root) { DeleteChildren(root, KVID::GetSingleton().extensions); });
}

void CKvProject::SaveExtensions()
{
    EditFile([&](CKvScriptTreeNode& root) {
        const KVID& id = KVID::GetSingleton();
        CKvScriptTreeNode* node = FindOrAddChild(root, id.extensions);
        DeleteChildren(*node, id.extension);
        for (const TKvString<char>& extension : m_extensions)
            AddExtensionNode(*node, extension);
    });
}

bool CKvProject::SerializeTo()
{
    return KvFalseWhenOutOfMemory([&] {
        const KVID& id = KVID::GetSingleton();
        CKvScriptTree tree;
        const EKvDocumentFile old = KvLoadDocumentFile(tree, GetProjectFile());
        if (tree.GetRootNode() == nullptr)
            tree.CreateRootNode(id.project);
        CKvScriptTreeNode& root = *tree.GetRootNode();
        WriteVersion(root);
        DeleteChildren(root, id.project_settings);
        m_settings->SerializeTo(root.AddNewChild(id.project_settings), this);
        CKvScriptTreeNode* extensions = FindOrAddChild(root, id.extensions);
        for (const TKvString<char>& extension : m_extensions) {
            if (!HasExtensionNode(*extensions, extension))
                AddExtensionNode(*extensions, extension);
        }
        return KvSaveDocumentFile(tree, GetProjectFile(), old);
    });
}

bool CKvProject::SerializeFrom()
{
    return KvFalseWhenOutOfMemory([&] {
        const KVID& id = KVID::GetSingleton();
        CKvScriptTree tree;
        if (!CKvScriptTreeSerializerXML().Load(tree, GetProjectFile()) ||
            IsTooOld(*tree.GetRootNode()))
            return false;
        if (!m_settings->SerializeFrom(tree.GetRootNode()->FindChild(id.project_settings)))
            return false;
        Texts extensions;
        if (const CKvScriptTreeNode* node = tree.GetRootNode()->FindChild(id.extensions)) {
            for (int i = 0; i < node->GetChildCount(); ++i)
                extensions.Add(node->GetChild(i)->GetAttributeValueAsString(id.name));
        }
        m_extensions = std::move(extensions);
        return true;
    });
}

const TKvString<char>& CKvProject::GetGeneralText(const char* key) const
{
    for (const CKvReflectionInformation& field : m_settings->GetReflectionInformationArray()) {
        if (field.GetIdentifier() == CKvIdentifier(key))
            return field.GetValueString(m_settings.get());
    }
    return TKvString<char>::STR_EMPTY;
}

void CKvProject::GetRealPath(const TKvString<char>& setting, TKvString<char>& out) const
{
    TKvString<char> path = KvResolveDocumentPath(setting, GetProjectDirectory());
    if (!std::string_view(path.GetText()).ends_with('\\'))
        path += "\\";
    out = path;
}

template <class TEdit>
void CKvProject::EditFile(TEdit edit)
{
    const bool saved = KvFalseWhenOutOfMemory([&] {
        CKvScriptTree tree;
        const EKvDocumentFile old = KvLoadDocumentFile(tree, GetProjectFile());
        if (old != EKvDocumentFile::Loaded)
            return old == EKvDocumentFile::Absent;
        edit(*tree.GetRootNode());
        return KvSaveDocumentFile(tree, GetProjectFile(), old);
    });
    if (!saved)
        KvReportUnsavedFile(GetProjectFile());
}
