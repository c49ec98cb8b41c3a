// The base of what a game loads: textures, meshes, sounds, levels. A resource has a name, belongs
// to the manager of its kind (resource/KvVoidResourceManager.h, which shows how to write both) and
// exists before its data does: the data is loaded when somebody first asks the manager for it, and
// unloaded when the resource pool that was on top by then is released
// (resource/KvResourceManagerManager.h).

#pragma once

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "core/KvString.h"

class CKvFileHandle;
class CKvVoidResourceManager;

/// Virtual functions and fields stand in the documented order.
///
/// Ownership: the manager's, which destroys it; it may be destroyed at any time but during its own
///            Load(), LoadFromMemory() and Unload(), and leaves its pool and the preload listing
///            then. It does not copy.
class CKvResource
{
public:
    enum EStatus : int
    {
        STATUS_FAILED = 0,      // the last load failed
        STATUS_NOT_LOADED = 1,  // never loaded, or unloaded again
        STATUS_LOADING = 2,     // LoadFromFileHandle() or LoadFromMemory() is running
        STATUS_LOADED = 3
    };

    /// The kinds. Other numbers are free for programs.
    enum EResourceType : int
    {
        TYPE_BILLBOARD = 1,
        TYPE_DIALOG = 2,
        TYPE_RAGDOLL_SETTINGS = 3,
        TYPE_SKELETON_ANIMATION = 4,
        TYPE_MATERIAL_LIBRARY = 5,
        TYPE_MESH = 6,
        TYPE_MESH_DYNAMIC = 7,
        TYPE_SUBMESH = 8,
        TYPE_META_ANIMATION = 9,
        TYPE_ANIMATION = 10,
        TYPE_ANIMATION_LAYOUT = 11,
        TYPE_PARTICLE_SYSTEM = 12,
        TYPE_PARTICLE_SYSTEM_BUCKET_PRESET = 13,
        TYPE_SHAPE = 14,
        TYPE_SOUND = 15,
        TYPE_ANIMATED_TEXTURE = 17,
        TYPE_SHADER = 18,
        TYPE_TEXTURE = 19,
        TYPE_VIDEO_TEXTURE = 20,
        TYPE_GUI = 21,
        TYPE_FONT = 22,
        TYPE_LEVEL = 23,
        TYPE_GAME_RULES = 24,
        TYPE_SUBTITLES = 25,
        TYPE_SPRITE_LIBRARY = 26,
        TYPE_NAV_MESH_FILE = 27,
        TYPE_DATA_SET = 28,
        TYPE_STRING_TABLE_ENTRY = 30,
        TYPE_SUBMESH2 = 34
    };

    /// The kinds of objects that are made at run time rather than loaded.
    enum EDynamicResourceType : int
    {
        DYNAMIC_TYPE_ENTITY = 0,
        DYNAMIC_TYPE_PARTICLE_SYSTEM_INSTANCE = 1,
        DYNAMIC_TYPE_RENDER_TARGET = 2
    };

    /// \a typeIdentifier is the identifier of the manager that will own the resource.
    CKvResource(const CKvIdentifier& identifier, const CKvIdentifier& typeIdentifier,
                EStatus status = STATUS_NOT_LOADED)
        : m_identifier(identifier), m_typeIdentifier(typeIdentifier), m_status(status)
    {
    }
    CKvResource(const CKvResource&) = delete;
    CKvResource& operator=(const CKvResource&) = delete;
    virtual ~CKvResource();

    /// Reads the data from bytes that were downloaded.
    ///
    /// Errors: false; this class reads nothing.
    virtual bool LoadFromMemory(const void* bytes, unsigned int size);

    /// Frees the data, also what a failed load left. It may load and release other resources.
    virtual void Unload() = 0;

    /// Reads the data from an open file; CKvFile(file).ReadEntireFile() is a good beginning. It may
    /// load other resources. Ownership: the handle stays the caller's, who closes it.
    ///
    /// Errors: false; what was read until then stays for Unload(). std::bad_alloc counts as false.
    virtual bool Load(CKvFileHandle* file) = 0;

    virtual EResourceType GetResourceType() const = 0;

    /// The kind's name as messages show it.
    virtual const char* GetTypeName() const = 0;

    /// Bytes that the loaded data takes in main memory and in video memory.
    virtual void GetMemoryUsage(int& ram, int& vram) const = 0;

    CKvIdentifier GetIdentifier() const { return m_identifier; }

    /// A manager goes on finding the resource by the name with which it was added.
    void SetIdentifier(const CKvIdentifier& identifier) { m_identifier = identifier; }

    CKvIdentifier GetTypeIdentifier() const { return m_typeIdentifier; }
    EStatus GetStatus() const { return m_status; }
    void SetStatus(EStatus status) { m_status = status; }

    /// The first registered manager of the resource's kind, or null.
    CKvVoidResourceManager* GetResourceManager() const;

    /// Reads the data from a disk file, whatever the status; status, pools and preload listing stay
    /// as they are.
    ///
    /// Errors: false when the file cannot be opened, which is logged, and when Load() fails.
    [[nodiscard]] bool LoadFromFile(const TKvString<char>& path);

    /// Reads the data from an open file, sets the status by the outcome, logs it and notes the
    /// resource in the preload listing. This is what a manager's LoadObject() calls.
    ///
    /// Errors: false when Load() fails.
    bool LoadFromFileHandle(CKvFileHandle* file);

    /// Unloads the data, unless the status says that there is none, after which it can be loaded
    /// again. A failed resource is unloaded as well. Does nothing while it runs already.
    void Release();

    /// The name of a kind, such as "texture"; "" for numbers without a name.
    static const char* GetResourceTypeName(EResourceType type);
    static const char* GetDynamicResourceTypeName(EDynamicResourceType type);

private:
    friend class CKvResourceManagerManager;
    friend class CKvResourcePreloadManager;
    friend class CKvVoidResourceManager;

    /// Where the preload listing has the resource, and how often it was loaded since.
    struct CPreloadNote
    {
        CKvArray<CKvResource*>* list = nullptr;
        int index = 0;
        unsigned int loadCount = 0;
    };

    /// Makes the resource the first of a pool's list and takes it out of the one that it is in.
    void LinkIntoPool(CKvResource*& firstResource);
    void UnlinkFromPool();

    CKvIdentifier m_identifier;
    CKvIdentifier m_typeIdentifier;
    EStatus m_status;
    CKvResource* m_nextInPool = nullptr;

    /// The pointer that leads here: the pool's, or that of the resource before this one. Null when
    /// no pool has recorded the resource.
    CKvResource** m_linkInPool = nullptr;
    CPreloadNote m_preloadNote;
    bool m_hasManager = false;
    bool m_isReleasing = false;
};
