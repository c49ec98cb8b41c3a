#include "resource/KvVoidResourceManager.h"

#include <algorithm>
#include <utility>

#include "core/KvEntryAt.h"
#include "core/KvIdentifierManager.h"
#include "core/KvLog.h"
#include "core/KvOutOfMemory.h"
#include "file/KvBigFile.h"
#include "file/KvDirectoryListing.h"
#include "file/KvFileSystemUnCached.h"
#include "resource/KvResource.h"
#include "resource/KvResourceManagerManager.h"
#include "system/KvDownload.h"

namespace {

/// The most that a downloaded resource may have, in bytes.
constexpr unsigned int kDownloadCapacity = 524'288;

TKvString<char> s_downloadServer;
TKvString<char> s_downloadPath;

}  // namespace

CKvVoidResourceManager::CKvVoidResourceManager(const CKvIdentifier& identifier)
    : m_identifier(identifier)
{
}

CKvVoidResourceManager::~CKvVoidResourceManager()
{
    CKvResourceManagerManager::GetInstance().RemoveManager(this);
}

void CKvVoidResourceManager::Release()
{
    // Resources that go may ask the manager, which no longer has what is being destroyed, and add
    // others, which go as well.
    while (!m_items.IsEmpty()) {
        const CKvArray<std::unique_ptr<ItemInfo>> items = std::exchange(m_items, {});
        m_table.Clear();
        for (const std::unique_ptr<ItemInfo>& item : items) {
            if (item->object != nullptr)
                DestroyObject(item->object);
        }
    }
    m_bigFiles.Clear();
}

CKvResource* CKvVoidResourceManager::GetVoidObject(int index) const
{
    const ItemInfo* item = GetItem(index);
    return item != nullptr ? item->object : nullptr;
}

std::uint64_t CKvVoidResourceManager::GetFileNameCrc(int index) const
{
    const ItemInfo* item = GetItem(index);
    return item != nullptr ? item->fileNameCrc : 0;
}

TKvString<char> CKvVoidResourceManager::GetFileName(int index) const
{
    const ItemInfo* item = GetItem(index);
    return item != nullptr ? item->fileName : TKvString<char>();
}

int CKvVoidResourceManager::GetVoidObjectIndex(const CKvResource* resource) const
{
    const ItemInfo* item = resource != nullptr ? FindItem(resource->GetIdentifier()) : nullptr;
    return item != nullptr ? item->index : -1;
}

CKvResource* CKvVoidResourceManager::FindVoidObject(const CKvIdentifier& identifier) const
{
    ItemInfo* item = FindItem(identifier);
    if (item == nullptr || item->object == nullptr)
        return nullptr;
    const bool isGiven =
        item->object->GetStatus() != CKvResource::STATUS_NOT_LOADED || LoadResource(item);
    return isGiven ? item->object : nullptr;
}

CKvResource* CKvVoidResourceManager::FindExistVoidObject(const CKvIdentifier& identifier) const
{
    const ItemInfo* item = FindItem(identifier);
    return item != nullptr ? item->object : nullptr;
}

void CKvVoidResourceManager::AddVoidObject(CKvResource* object, const TKvString<char>& name)
{
    Adopt(object, name, ItemInfo::kLooseFile);
}

void CKvVoidResourceManager::GetIdentifierArray(CKvArray<CKvIdentifier>& identifiers) const
{
    identifiers.Clear();
    for (const std::unique_ptr<ItemInfo>& item : m_items) {
        if (item->object != nullptr)
            identifiers.Add(item->object->GetIdentifier());
    }
}

void CKvVoidResourceManager::SetDownloadServer(const TKvString<char>& host)
{
    s_downloadServer = host;
}

void CKvVoidResourceManager::SetDownloadPath(const TKvString<char>& path)
{
    s_downloadPath = path;
}

void CKvVoidResourceManager::ScanBigFile(const TKvString<char>& path)
{
    auto opened = std::make_unique<CKvBigFile>();
    if (opened->Open(path, EKvFileSystemOpenMode::ReadBinary) != EKvFileSystemError::Success) {
        KvLog(ELogLevel::Error, ELogType::ResourceScan, 1, "Unable to open bigfile : %s",
              path.GetText());
        KvLog(ELogLevel::Error, ELogType::ResourceScan, 1,
              "Unable to initialize %s manager from bigfile : \"%s\"", GetTypeName(),
              path.GetText());
        return;
    }
    const CKvBigFile& archive = *opened;
    const int bigFileIndex = m_bigFiles.GetCount();
    m_bigFiles.Add(std::move(opened));
    const int fileCount = archive.GetNumFiles();
    m_items.SetGrowthStep(std::max(fileCount, m_items.kDefaultGrowthStep));
    for (int i = 0; i < fileCount; ++i) {
        const std::uint64_t crc = archive.GetFileNameCrcByIndex(i);
        ItemInfo& item = AppendItem();
        item.fileName = archive.GetFileNameByIndex(i);
        item.sourceName = path;
        item.bigFileIndex = bigFileIndex;
        item.fileIndex = i;
        item.object = CreateObject(CKvIdentifierManager::GetInstance().FindNameForCrc64(crc));
        SetKey(item, crc);
    }
}

void CKvVoidResourceManager::ScanDirectory(const TKvString<char>& path,
                                           const TKvString<char>& extension)
{
    CKvArray<TKvString<char>> extensions;
    if (!extension.IsEmpty())
        extensions.Add(extension);
    CKvArray<TKvString<char>> files;
    if (!KvRetrieveFilesFromDirectoryRecursive(path, files, extensions)) {
        KvLog(ELogLevel::Error, ELogType::ResourceScan, 1,
              "Unable to get file list from directory : %s", path.GetText());
        KvLog(ELogLevel::Error, ELogType::ResourceScan, 1,
              "Unable to initialize %s manager from path : \"%s\"", GetTypeName(), path.GetText());
        return;
    }
    m_items.SetGrowthStep(std::max(files.GetCount(), m_items.kDefaultGrowthStep));
    for (TKvString<char>& file : files) {
        ItemInfo& item = AppendItem();
        item.object = CreateObject(file);
        item.fileName = std::move(file);
        SetKey(item, item.object != nullptr ? item.object->GetIdentifier().GetCrc64()
                                            : CKvIdentifier(item.fileName).GetCrc64());
    }
}

void CKvVoidResourceManager::ScanForFileType(const TKvString<char>& path, const char* extension)
{
    ScanDirectory(path, TKvString<char>(extension));
}

void CKvVoidResourceManager::AddEmptyObjectByName(const TKvString<char>& name)
{
    ItemInfo& item = AppendItem();
    item.object = CreateObject(name);
    SetKey(item, CKvIdentifier(name).GetCrc64());
}

void CKvVoidResourceManager::AddDownloadedObject(CKvResource* object, const TKvString<char>& name)
{
    Adopt(object, name, ItemInfo::kDownload);
}

CKvVoidResourceManager::ItemInfo* CKvVoidResourceManager::GetItem(int index) const
{
    return KvEntryAt(m_items, index);
}

CKvVoidResourceManager::ItemInfo* CKvVoidResourceManager::FindItem(
    const CKvIdentifier& identifier) const
{
    return m_table.Find(identifier.GetCrc64());
}

bool CKvVoidResourceManager::LoadResource(ItemInfo* item) const
{
    if (item == nullptr || item->object == nullptr)
        return false;
    CKvResource& object = *item->object;
    CKvFileHandle* file = nullptr;
    const bool isFetched = KvFalseWhenOutOfMemory([&] {
        if (item->bigFileIndex == ItemInfo::kDownload)
            return LoadDownload(object);
        file = OpenResourceFile(*item);
        return file != nullptr;
    });
    if (!isFetched) {
        object.SetStatus(CKvResource::STATUS_FAILED);
        return false;
    }
    if (file != nullptr) {
        const bool hadMemory = KvFalseWhenOutOfMemory([&] {
            LoadObject(&object, file);
            return true;
        });
        if (!hadMemory)
            object.SetStatus(CKvResource::STATUS_FAILED);
        CloseResourceFile(*item, file);
    }
    CKvResourceManagerManager::GetInstance().AddLoadedResourceToCurrentStack(&object);
    return true;
}

bool CKvVoidResourceManager::ForceLoadAllResources() const
{
    for (int i = 0; i < GetCount(); ++i) {
        ItemInfo* item = GetItem(i);
        if (item->object != nullptr &&
            item->object->GetStatus() == CKvResource::STATUS_NOT_LOADED && !LoadResource(item)) {
            return false;
        }
    }
    return true;
}

CKvFileHandle* CKvVoidResourceManager::OpenResourceFile(const ItemInfo& item) const
{
    if (item.bigFileIndex >= 0 && item.bigFileIndex < m_bigFiles.GetCount())
        return m_bigFiles[item.bigFileIndex]->FileOpenByIndex(item.fileIndex);
    CKvFileHandle* file = nullptr;
    if (item.bigFileIndex != ItemInfo::kLooseFile ||
        CKvFileSystemUnCached::Open(file, item.fileName, EKvFileSystemOpenMode::ReadBinary,
                                    false) != EKvFileSystemError::Success) {
        return nullptr;
    }
    return file;
}

void CKvVoidResourceManager::CloseResourceFile(const ItemInfo&, CKvFileHandle* file) const
{
    CKvFileSystemUnCached::Close(file);  // members of archives as well
}

/// The steps of adding an item stand in such an order that when memory is short on the way the item
/// merely lacks what comes later: nothing is lost, and nothing is owned twice.
CKvVoidResourceManager::ItemInfo& CKvVoidResourceManager::AppendItem()
{
    auto item = std::make_unique<ItemInfo>();
    item->index = GetCount();
    m_items.Add(std::move(item));
    return *m_items[GetCount() - 1];
}

void CKvVoidResourceManager::SetKey(ItemInfo& item, std::uint64_t fileNameCrc)
{
    if (item.object != nullptr)
        item.object->m_hasManager = true;
    item.fileNameCrc = fileNameCrc;
    m_table.Insert(&item);
}

void CKvVoidResourceManager::Adopt(CKvResource* object, const TKvString<char>& name,
                                   int bigFileIndex)
{
    if (object == nullptr || object->m_hasManager)
        return;
    ItemInfo& item = AppendItem();
    item.fileName = name;
    item.sourceName = name;
    item.bigFileIndex = bigFileIndex;
    SetKey(item, object->GetIdentifier().GetCrc64());
    item.object = object;
    object->m_hasManager = true;
}

bool CKvVoidResourceManager::LoadDownload(CKvResource& object) const
{
    const auto buffer = std::make_unique<char[]>(kDownloadCapacity);
    unsigned int size = 0;
    if (!KvDownloadFile(s_downloadServer.GetText(), s_downloadPath.GetText(), buffer.get(),
                        kDownloadCapacity, size)) {
        return false;
    }
    object.SetStatus(CKvResource::STATUS_LOADING);  // two downloads may ask for each other
    const bool isLoaded = object.LoadFromMemory(buffer.get(), size);
    object.SetStatus(isLoaded ? CKvResource::STATUS_LOADED : CKvResource::STATUS_FAILED);
    return true;
}
