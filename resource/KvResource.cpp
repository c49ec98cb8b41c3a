#include "resource/KvResource.h"

#include <span>

#include "core/KvLog.h"
#include "core/KvOutOfMemory.h"
#include "file/KvFileSystemUnCached.h"
#include "resource/KvResourceManagerManager.h"
#include "resource/KvResourcePreloadManager.h"
#include "resource/KvVoidResourceManager.h"

namespace {

struct CTypeName
{
    int type;
    const char* name;
};

constexpr CTypeName kTypeNames[] = {
    {CKvResource::TYPE_BILLBOARD, "billboard"},
    {CKvResource::TYPE_DIALOG, "dialog"},
    {CKvResource::TYPE_RAGDOLL_SETTINGS, "ragdollsettings"},
    {CKvResource::TYPE_SKELETON_ANIMATION, "skeletonanimation"},
    {CKvResource::TYPE_MATERIAL_LIBRARY, "materiallibrary"},
    {CKvResource::TYPE_MESH, "mesh"},
    {CKvResource::TYPE_MESH_DYNAMIC, "mesh_dynamic"},
    {CKvResource::TYPE_SUBMESH, "submesh"},
    {CKvResource::TYPE_META_ANIMATION, "metaanimation"},
    {CKvResource::TYPE_ANIMATION, "animation"},
    {CKvResource::TYPE_ANIMATION_LAYOUT, "animation_layout"},
    {CKvResource::TYPE_PARTICLE_SYSTEM, "particlesystem"},
    {CKvResource::TYPE_PARTICLE_SYSTEM_BUCKET_PRESET, "particlesystembucketpreset"},
    {CKvResource::TYPE_SHAPE, "shape"},
    {CKvResource::TYPE_SOUND, "sound"},
    {CKvResource::TYPE_ANIMATED_TEXTURE, "animatedtexture"},
    {CKvResource::TYPE_SHADER, "shader"},
    {CKvResource::TYPE_TEXTURE, "texture"},
    {CKvResource::TYPE_VIDEO_TEXTURE, "videotexture"},
    {CKvResource::TYPE_GUI, "gui"},
    {CKvResource::TYPE_FONT, "font"},
    {CKvResource::TYPE_LEVEL, "level"},
    {CKvResource::TYPE_GAME_RULES, "gamerules"},
    {CKvResource::TYPE_SUBTITLES, "subtitles"},
    {CKvResource::TYPE_SPRITE_LIBRARY, "spritelibrary"},
    {CKvResource::TYPE_NAV_MESH_FILE, "navmeshfile"},
    {CKvResource::TYPE_DATA_SET, "dataset"},
    {CKvResource::TYPE_STRING_TABLE_ENTRY, "stringtable_entry"},
    {CKvResource::TYPE_SUBMESH2, "submesh2"},
};

constexpr CTypeName kDynamicTypeNames[] = {
    {CKvResource::DYNAMIC_TYPE_ENTITY, "entity"},
    {CKvResource::DYNAMIC_TYPE_PARTICLE_SYSTEM_INSTANCE, "ps instance"},
    {CKvResource::DYNAMIC_TYPE_RENDER_TARGET, "render target"},
};

const char* FindTypeName(std::span<const CTypeName> names, int type)
{
    for (const CTypeName& row : names) {
        if (row.type == type)
            return row.name;
    }
    return "";
}

}  // namespace

CKvResource::~CKvResource()
{
    UnlinkFromPool();
    CKvResourcePreloadManager::RemoveResource(*this);
}

bool CKvResource::LoadFromMemory(const void*, unsigned int)
{
    return false;
}

CKvVoidResourceManager* CKvResource::GetResourceManager() const
{
    return CKvResourceManagerManager::GetInstance().FindManager(m_typeIdentifier);
}

bool CKvResource::LoadFromFile(const TKvString<char>& path)
{
    CKvFileHandle* file = nullptr;
    if (CKvFileSystemUnCached::Open(file, path, EKvFileSystemOpenMode::ReadBinary, false) !=
        EKvFileSystemError::Success) {
        const CKvVoidResourceManager* manager = GetResourceManager();
        KvLog(ELogLevel::Info, ELogType::Resource, 0, "Can't load %s file '%s'",
              manager != nullptr ? manager->GetTypeName() : GetTypeName(), path.GetText());
        return false;
    }
    const bool isLoaded = KvFalseWhenOutOfMemory([&] { return Load(file); });
    CKvFileSystemUnCached::Close(file);
    return isLoaded;
}

bool CKvResource::LoadFromFileHandle(CKvFileHandle* file)
{
    m_status = STATUS_LOADING;
    const bool isLoaded = KvFalseWhenOutOfMemory([&] {
        CKvResourcePreloadManager::GetInstance().AddResource(this);
        return Load(file);
    });
    const TKvString<char> pool =
        CKvResourceManagerManager::GetInstance().GetTopResourcePoolId().DebugString();
    const TKvString<char> name = m_identifier.DebugString();
    if (!isLoaded) {
        KvLog(ELogLevel::Info, ELogType::Resource, 1, "[+] %s '%s' (pool: %s)", GetTypeName(),
              name.GetText(), pool.GetText());
        KvLog(ELogLevel::Info, ELogType::Resource, 1, "FAILED to load %s resource : \"%s\"",
              GetTypeName(), file != nullptr ? file->GetName().GetText() : "");
        m_status = STATUS_FAILED;
        return false;
    }
    int ram = 0;
    int vram = 0;
    GetMemoryUsage(ram, vram);
    KvLog(ELogLevel::Info, ELogType::Resource, 1, "[+] %s '%s' (pool: %s) (RAM: %d VRAM %d)",
          GetTypeName(), name.GetText(), pool.GetText(), ram, vram);
    m_status = STATUS_LOADED;
    return true;
}

void CKvResource::Release()
{
    if (m_status == STATUS_NOT_LOADED || m_isReleasing)
        return;
    KvLog(ELogLevel::Info, ELogType::Resource, 1, "[-] %s '%s'", GetTypeName(),
          m_identifier.DebugString().GetText());
    m_isReleasing = true;  // two resources may release each other
    Unload();
    m_isReleasing = false;
    m_status = STATUS_NOT_LOADED;
}

const char* CKvResource::GetResourceTypeName(EResourceType type)
{
    return FindTypeName(kTypeNames, type);
}

const char* CKvResource::GetDynamicResourceTypeName(EDynamicResourceType type)
{
    return FindTypeName(kDynamicTypeNames, type);
}

void CKvResource::LinkIntoPool(CKvResource*& firstResource)
{
    UnlinkFromPool();
    m_nextInPool = firstResource;
    if (m_nextInPool != nullptr)
        m_nextInPool->m_linkInPool = &m_nextInPool;
    m_linkInPool = &firstResource;
    firstResource = this;
}

void CKvResource::UnlinkFromPool()
{
    if (m_linkInPool == nullptr)
        return;
    *m_linkInPool = m_nextInPool;
    if (m_nextInPool != nullptr)
        m_nextInPool->m_linkInPool = m_linkInPool;
    m_nextInPool = nullptr;
    m_linkInPool = nullptr;
}
