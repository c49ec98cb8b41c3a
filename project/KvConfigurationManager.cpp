#include "project/KvConfigurationManager.h"

#include <cstdio>
#include <utility>

#include "core/KvOutOfMemory.h"
#include "platform/KvPlatform.h"
#include "project/KvConfigurationTexts.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

constexpr const char* kBuilds = "BuildConfigs";
constexpr const char* kBuild = "build";
constexpr const char* kDistrib = "distrib";
constexpr const char* kName = "Name";
constexpr const char* kArgs = "Args";
constexpr const char* kWrittenQuote = "&quot;";

/// The last numbers of generated names, for the whole run of the program.
int s_buildNumber = 0;
int s_distribNumber = 0;

template <class T>
using TList = CKvArray<std::unique_ptr<T>>;

template <class T>
int FindIndex(const TList<T>& list, const CKvIdentifier& name)
{
    for (int i = 0; i < list.GetCount(); ++i) {
        if (CKvIdentifier(list[i]->GetName()) == name)
            return i;
    }
    return -1;
}

template <class T>
T* Find(const TList<T>& list, const CKvIdentifier& name)
{
    const int index = FindIndex(list, name);
    return index >= 0 ? list[index].get() : nullptr;
}

template <class T>
T* Append(TList<T>& list, const TKvString<char>& name)
{
    auto configuration = std::make_unique<T>();
    configuration->SetName(name);
    list.Add(std::move(configuration));
    return list[list.GetCount() - 1].get();
}

template <class T>
void Remove(TList<T>& list, const CKvIdentifier& name)
{
    const int index = FindIndex(list, name);
    if (index >= 0)
        list.RemoveAt(index);
}

template <class T>
void Reset(const TList<T>& list, const CKvScriptTreeNode* section, const char* nodeName,
           const CKvIdentifier& name)
{
    T* configuration = Find(list, name);
    if (configuration != nullptr && section != nullptr)
        configuration->Initialize(section->FindChildByIdAndAttributeValue(
            CKvIdentifier(nodeName), CKvIdentifier(kName), name));
}

template <class T>
TKvString<char> MakeName(const TList<T>& list, const char* prefix, int& number)
{
    TKvString<char> name;
    do {
        char text[32];
        std::snprintf(text, sizeof text, "%s%03d", prefix, ++number);
        name = text;
    } while (Find(list, CKvIdentifier(name)) != nullptr);
    return name;
}

template <class T, class TAccepts>
CKvArray<TKvString<char>> ListNames(const TList<T>& list, TAccepts accepts)
{
    CKvArray<TKvString<char>> names;
    for (const std::unique_ptr<T>& configuration : list) {
        if (accepts(*configuration))
            names.Add(configuration->GetName());
    }
    return names;
}

template <class T>
CKvArray<TKvString<char>> ListNames(const TList<T>& list)
{
    return ListNames(list, [](const T&) { return true; });
}

template <class T>
TKvString<char> AllWellFormed(const TList<T>& list)
{
    TKvString<char> complaints;
    for (const std::unique_ptr<T>& configuration : list)
        complaints += configuration->WellFormed();
    return complaints;
}

// --- Sections of the document

/// One configuration for each child, whatever its name.
template <class T>
TList<T> ReadAll(const CKvScriptTreeNode& section)
{
    TList<T> list;
    for (int i = 0; i < section.GetChildCount(); ++i) {
        auto configuration = std::make_unique<T>();
        configuration->Initialize(section.GetChild(i));
        list.Add(std::move(configuration));
    }
    return list;
}

template <class T>
void WriteLast(CKvScriptTreeNode& section, const T& configuration)
{
    CKvOwnedScriptTreeNode node(configuration.ToCKvScriptTreeNode());
    section.AddChild(node.get());
    (void)node.release();
}

template <class T>
void WriteAll(CKvScriptTreeNode& section, const TList<T>& list)
{
    section.Empty();
    for (const std::unique_ptr<T>& configuration : list)
        WriteLast(section, *configuration);
}

/// False when the list has no configuration of that name.
template <class T>
bool WriteCurrent(CKvScriptTreeNode& section, const TList<T>& list, const CKvIdentifier& name)
{
    const T* configuration = Find(list, name);
    if (configuration == nullptr)
        return false;
    const CKvOwnedScriptTreeNode stored(section.FindChildByAttribute(CKvIdentifier(kName), name));
    section.RemoveChild(stored.get());
    WriteLast(section, *configuration);
    return true;
}

/// Gives the attributes that a build does not take as they are the texts that it made of them, so
/// that its node is found by its name and is written with its quotes replaced.
void WriteNormalized(CKvScriptTreeNode& node, const CKvConfigurationBuild& build)
{
    if (CKvScriptTreeAttribute* name = node.FindAttribute(CKvIdentifier(kName)))
        name->SetValue(build.GetName());
    if (CKvScriptTreeAttribute* args = node.FindAttribute(CKvIdentifier(kArgs)))
        args->SetValue(build.GetArgs());
}

/// Whether the written document gives every text back. The builds' arguments hold their quotes as
/// "&quot;", which is read back as a quote and replaced again: one character like any other.
bool ReadsBack(const CKvScriptTreeNode& root)
{
    CKvScriptTree copy;
    copy.SetRootNode(new CKvScriptTreeNode(root));
    const CKvScriptTreeNode* builds = copy.GetRootNode()->FindChild(CKvIdentifier(kBuilds));
    for (int i = 0; i < builds->GetChildCount(); ++i) {
        if (auto* args = builds->GetChild(i)->FindAttribute(CKvIdentifier(kArgs)))
            args->SetValue(KvReplaceAll(args->GetValue(), kWrittenQuote, "_"));
    }
    TKvString<char> text;
    return KvComposeDocument(copy, text);
}

bool SaveDocument(CKvScriptTree& document, const TKvString<char>& path, EKvDocumentFile old)
{
    TKvString<char> text;
    return ReadsBack(*document.GetRootNode()) &&
           CKvScriptTreeSerializerXML().Dump(document, text) &&
           KvWriteDocumentFile(text, path, old, EKvNewFileAccess::OwnerOnly);
}

/// Makes a file that is not there. False when it can be neither made nor written to.
bool EnsureFile(const TKvString<char>& path)
{
    std::FILE* stream = KvPlatformDisk().openStream(path.GetText(), "abp");
    return stream != nullptr && KvPlatformDisk().closeStream(stream);
}

}  // namespace

CKvConfigurationManager::~CKvConfigurationManager() = default;

void CKvConfigurationManager::Initialize(const char* path)
{
    m_buildFilePath = path;
    LoadConfig();
}

void CKvConfigurationManager::LoadConfig()
{
    ForgetDocument();
    if (KvFalseWhenOutOfMemory([&] { return ReadDocument(); }))
        return;
    ForgetDocument();
    std::fprintf(stderr, "Cannot open file %s\n", m_buildFilePath.GetText());
}

CKvConfigurationBuild* CKvConfigurationManager::GetBuild(const CKvIdentifier& name) const
{
    return Find(m_builds, name);
}

CKvConfigurationDistribution* CKvConfigurationManager::GetDistrib(const CKvIdentifier& name) const
{
    return Find(m_distribs, name);
}

CKvConfigurationBuild* CKvConfigurationManager::AddBuild(const TKvString<char>& name)
{
    return Append(m_builds, name);
}

CKvConfigurationDistribution* CKvConfigurationManager::AddDistrib(const TKvString<char>& name)
{
    return Append(m_distribs, name);
}

void CKvConfigurationManager::RemoveBuild(const CKvIdentifier& name)
{
    Remove(m_builds, name);
}

void CKvConfigurationManager::RemoveDistrib(const TKvString<char>& name)
{
    Remove(m_distribs, CKvIdentifier(name));
}

void CKvConfigurationManager::ResetBuild(const CKvIdentifier& name)
{
    Reset(m_builds, m_buildsNode, kBuild, name);
}

void CKvConfigurationManager::ResetDistrib(const CKvIdentifier& name)
{
    Reset(m_distribs, m_distribsNode, kDistrib, name);
}

TKvString<char> CKvConfigurationManager::GenerateAutoNameBuild()
{
    return MakeName(m_builds, "NewConfig_", s_buildNumber);
}

TKvString<char> CKvConfigurationManager::GenerateAutoNameDistrib()
{
    return MakeName(m_distribs, "NewDistrib_", s_distribNumber);
}

CKvArray<TKvString<char>> CKvConfigurationManager::GetListBuild() const
{
    return ListNames(m_builds);
}

CKvArray<TKvString<char>> CKvConfigurationManager::GetListDistrib() const
{
    return ListNames(m_distribs);
}

CKvArray<TKvString<char>> CKvConfigurationManager::GetListDistribForPlatform(
    const TKvString<char>& platform) const
{
    return ListNames(m_distribs, [&](const CKvConfigurationDistribution& distribution) {
        return distribution.IsCompatibleWith(platform);
    });
}

TKvString<char> CKvConfigurationManager::AllWellFormedBuild() const
{
    return AllWellFormed(m_builds);
}

TKvString<char> CKvConfigurationManager::AllWellFormedDistrib() const
{
    return AllWellFormed(m_distribs);
}

void CKvConfigurationManager::SaveAll()
{
    SaveEdited([&] {
        m_project->ToCKvScriptTreeNode(m_projectNode);
        m_sourceControl->ToCKvScriptTreeNode(m_sourceControlNode);
        WriteAll(*m_buildsNode, m_builds);
        WriteAll(*m_distribsNode, m_distribs);
        return true;
    });
}

void CKvConfigurationManager::SaveAllBuild()
{
    SaveEdited([&] {
        WriteAll(*m_buildsNode, m_builds);
        return true;
    });
}

void CKvConfigurationManager::SaveAllDistrib()
{
    SaveEdited([&] {
        WriteAll(*m_distribsNode, m_distribs);
        return true;
    });
}

void CKvConfigurationManager::SaveCurrentBuild(const CKvIdentifier& name)
{
    SaveEdited([&] { return WriteCurrent(*m_buildsNode, m_builds, name); });
}

void CKvConfigurationManager::SaveCurrentDistrib(const CKvIdentifier& name)
{
    SaveEdited([&] { return WriteCurrent(*m_distribsNode, m_distribs, name); });
}

void CKvConfigurationManager::ForgetDocument()
{
    m_document.Empty();
    m_projectNode = m_sourceControlNode = m_buildsNode = m_distribsNode = nullptr;
}

void CKvConfigurationManager::FindSections()
{
    CKvScriptTreeNode& root = *m_document.GetRootNode();
    const auto findOrAppend = [&](const char* name) {
        const CKvIdentifier identifier(name);
        CKvScriptTreeNode* section = root.FindChild(identifier);
        return section != nullptr ? section : root.AddNewChild(identifier);
    };
    m_projectNode = findOrAppend("ProjectConfig");
    m_sourceControlNode = findOrAppend("SourceControlConfig");
    m_buildsNode = findOrAppend(kBuilds);
    m_distribsNode = findOrAppend("DistribConfigs");
}

bool CKvConfigurationManager::ReadDocument()
{
    if (!EnsureFile(m_buildFilePath))
        return false;
    m_file = KvLoadDocumentFile(m_document, m_buildFilePath);
    if (m_file == EKvDocumentFile::Unreadable)
        return false;
    if (m_document.GetRootNode() == nullptr)
        m_document.CreateRootNode(CKvIdentifier("Configurations"));
    FindSections();

    auto builds = ReadAll<CKvConfigurationBuild>(*m_buildsNode);
    auto distribs = ReadAll<CKvConfigurationDistribution>(*m_distribsNode);
    for (int i = 0; i < builds.GetCount(); ++i)
        WriteNormalized(*m_buildsNode->GetChild(i), *builds[i]);
    if (m_project == nullptr)
        m_project = std::make_unique<CKvConfigurationProject>();
    if (m_sourceControl == nullptr)
        m_sourceControl = std::make_unique<CKvConfigurationSourceControl>();
    m_project->Initialize(m_projectNode);
    m_sourceControl->Initialize(m_sourceControlNode);
    m_builds = std::move(builds);
    m_distribs = std::move(distribs);
    return true;
}

template <class TEdit>
void CKvConfigurationManager::SaveEdited(TEdit edit)
{
    CKvOwnedScriptTreeNode before;
    const bool saved = m_document.GetRootNode() != nullptr && KvFalseWhenOutOfMemory([&] {
                           before.reset(new CKvScriptTreeNode(*m_document.GetRootNode()));
                           return edit() && SaveDocument(m_document, m_buildFilePath, m_file);
                       });
    if (saved) {
        m_file = EKvDocumentFile::Loaded;
        return;
    }
    if (before != nullptr) {
        m_document.SetRootNode(before.release());
        FindSections();
    }
    KvReportUnsavedFile(m_buildFilePath);
}
