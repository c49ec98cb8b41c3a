#include "project/KvProjectManager.h"

#include <algorithm>

#include "core/KvId.h"
#include "file/KvDirectoryListing.h"
#include "project/KvProject.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

using Texts = CKvArray<TKvString<char>>;

constexpr const char* kGenericFolders[] = {"Game", "Levels", "Resources", "Videos"};
constexpr const char* kResourceFolders[] = {
    "Animations", "AudioStreams",  "DataSets",        "Fonts",  "FSM",       "Material",
    "Meshes",     "MetaAnimation", "ParticleSystems", "Prefab", "Ragdoll",   "Shaders",
    "Shapes",     "Sounds",        "Sprites",         "String", "Subtitles", "Textures"};

Texts ListFolders(const TKvString<char>& folder)
{
    Texts folders;
    KvRetrieveDirectoriesFromDirectory(folder, folders);
    return folders;
}

bool Contains(const Texts& texts, const TKvString<char>& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// Whether all the named folders are among the listed ones of \a folder.
template <class TNames>
bool ContainsAll(const Texts& listed, const TKvString<char>& folder, const TNames& names)
{
    return std::all_of(std::begin(names), std::end(names),
                       [&](const char* name) { return Contains(listed, folder + "\\" + name); });
}

}  // namespace

CKvProjectManager& CKvProjectManager::GetInstance()
{
    static auto* const s_manager = new CKvProjectManager;
    return *s_manager;
}

CKvProjectManager::CKvProjectManager() = default;
CKvProjectManager::~CKvProjectManager() = default;

void CKvProjectManager::SetCurrentProject(CKvProject* project)
{
    if (project != m_current.get())
        m_current.reset(project);
}

bool CKvProjectManager::LoadProject(const TKvString<char>& file)
{
    auto project = std::make_unique<CKvProject>(file);
    project->Initialize();
    m_current = std::move(project);
    return true;
}

TKvString<char> CKvProjectManager::GetCurrentProjectFile() const
{
    return m_current != nullptr ? m_current->GetProjectFile() : TKvString<char>();
}

TKvString<char> CKvProjectManager::GetCurrentProjectDirectory() const
{
    return m_current != nullptr ? m_current->GetProjectDirectory() : TKvString<char>();
}

CKvArray<TKvString<char>> CKvProjectManager::GetCurrentProjectExtensions() const
{
    return m_current != nullptr ? m_current->GetExtensions() : Texts();
}

void CKvProjectManager::AddExtensionInCurrentProject(const TKvString<char>& extension)
{
    if (m_current != nullptr)
        m_current->AddExtension(extension);
}

void CKvProjectManager::AddExtensionsInCurrentProject(const Texts& extensions)
{
    if (m_current != nullptr)
        m_current->AddExtensions(extensions);
}

void CKvProjectManager::RemoveExtensionInCurrentProject(const TKvString<char>& extension)
{
    if (m_current != nullptr)
        m_current->RemoveExtension(extension);
}

void CKvProjectManager::RemoveAllExtensionsInCurrentProject()
{
    if (m_current != nullptr)
        m_current->RemoveAllExtensions();
}

CKvScriptTreeNode* CKvProjectManager::GetEditorProjectSettings() const
{
    CKvScriptTree tree;
    if (m_current == nullptr ||
        !CKvScriptTreeSerializerXML().Load(tree, m_current->GetProjectFile()))
        return nullptr;
    const CKvScriptTreeNode* settings =
        tree.GetRootNode()->FindChild(KVID::GetSingleton().editor_settings);
    return settings != nullptr ? new CKvScriptTreeNode(*settings) : nullptr;
}

bool CKvProjectManager::IsAcceptableWorkspace(const TKvString<char>& folder)
{
    if (!Contains(ListFolders(folder), folder + "Generic"))
        return false;
    const TKvString<char> generic = folder + "\\Generic";
    const Texts genericFolders = ListFolders(generic);
    if (genericFolders.GetCount() != static_cast<int>(std::size(kGenericFolders)) ||
        !ContainsAll(genericFolders, generic, kGenericFolders))
        return false;
    const TKvString<char> resources = generic + "\\Resources";
    return ContainsAll(ListFolders(resources), resources, kResourceFolders);
}
