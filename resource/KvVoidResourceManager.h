// The base of the managers of resources, one for each kind. A manager knows every resource of its
// kind before any is loaded: scanning a folder or an archive makes one empty object a file, and the
// file is read when the resource is first asked for. A kind of one's own takes two small classes:
//
//     class CSprite : public CKvResource {
//         std::string m_text;
//     public:
//         using CKvResource::CKvResource;
//         bool Load(CKvFileHandle* file) override;  // fills m_text from CKvFile(file)
//         void Unload() override { m_text.clear(); }
//         EResourceType GetResourceType() const override { return TYPE_TEXTURE; }
//         const char* GetTypeName() const override { return "sprite"; }
//         void GetMemoryUsage(int& ram, int&) const override { ram = int(m_text.size()); }
//     };
//     class CSpriteManager : public CKvVoidResourceManager {
//     public:
//         CSpriteManager() : CKvVoidResourceManager(CKvIdentifier("sprite")) {}
//         ~CSpriteManager() override { Release(); }
//         void Scan(const char* archive) { ScanBigFile(archive); }
//         const char* GetTypeName() const override { return "sprite"; }
//     protected:
//         CKvResource* CreateObject(const TKvString<char>& name) override
//         { return new CSprite(CKvIdentifier(name), GetIdentifier()); }
//         void DestroyObject(CKvResource* object) override { delete object; }
//         bool LoadObject(CKvResource* object, CKvFileHandle* file) const override
//         { return object->LoadFromFileHandle(file); }
//     };
//
// FindVoidObject(CKvIdentifier("hero.txt")) then loads and gives the sprite.

#pragma once

#include <cstdint>
#include <memory>

#include "core/KvArray.h"
#include "core/KvHashTable.h"
#include "core/KvIdentifier.h"
#include "core/KvSaltedHash.h"
#include "core/KvString.h"

class CKvBigFile;
class CKvFileHandle;
class CKvResource;

/// How the item table treats its entries.
template <class TItemInfo>
class CKvResourceItemHashingPolicy
{
public:
    using Key = std::uint64_t;

    static const Key& GetKey(const TItemInfo& item) { return item.fileNameCrc; }
    static bool MatchKey(const TItemInfo& item, Key key) { return item.fileNameCrc == key; }

    /// The low 32 bits of the key.
    static int CreateHash(Key key) { return static_cast<int>(static_cast<std::uint32_t>(key)); }
};

/// Virtual functions and fields stand in the documented order.
///
/// Each resource is an item with an index. When two items have the same name both exist, and the
/// first is found.
///
/// Ownership: the manager owns its resources and archives. It does not copy.
class CKvVoidResourceManager
{
public:
    /// One known resource.
    struct ItemInfo
    {
        /// Values of bigFileIndex that stand for no archive.
        static constexpr int kLooseFile = -1;
        static constexpr int kDownload = -2;

        CKvResource* object = nullptr;
        std::uint64_t fileNameCrc = 0;
        int bigFileIndex = kLooseFile;
        int fileIndex = -1;  // in the archive
        int index = 0;
        TKvString<char> fileName;    // the loose file's path, or the name stored in the archive
        TKvString<char> sourceName;  // the archive's path, or the name of an added object
    };

    explicit CKvVoidResourceManager(const CKvIdentifier& identifier = {});
    CKvVoidResourceManager(const CKvVoidResourceManager&) = delete;
    CKvVoidResourceManager& operator=(const CKvVoidResourceManager&) = delete;

    /// Leaves the register of managers. A concrete manager's destructor calls Release(), since it
    /// alone knows how to destroy its resources.
    virtual ~CKvVoidResourceManager();

    /// Destroys all resources and closes all archives. Resources that are loaded or recorded in
    /// pools go as well, without Unload(): their destructors free what they hold. Not for the time
    /// when one of them is loading or unloading.
    virtual void Release();

protected:
    /// Destroys what CreateObject() made or AddVoidObject() took.
    virtual void DestroyObject(CKvResource* object) = 0;

    /// Makes the new, empty object of a file. The name is the path of a loose file, the registered
    /// text of an archive's entry ("" when there is none) or what AddEmptyObjectByName() was given.
    ///
    /// Ownership: the manager's.
    /// Errors:    null makes an item that is never found.
    virtual CKvResource* CreateObject(const TKvString<char>& name) = 0;

    /// Reads an object's data and sets its status, by CKvResource::LoadFromFileHandle().
    ///
    /// Errors: those that the status tells; the result is not looked at.
    virtual bool LoadObject(CKvResource* object, CKvFileHandle* file) const = 0;

public:
    /// The kind's name as messages show it.
    virtual const char* GetTypeName() const = 0;

    /// The manager's kind, which its resources have as their type.
    CKvIdentifier GetIdentifier() const { return m_identifier; }
    void SetIdentifier(const CKvIdentifier& identifier) { m_identifier = identifier; }

    int GetCount() const { return m_items.GetCount(); }

    // Indices out of range assert; in a release build they give null, 0 and "".
    CKvResource* GetVoidObject(int index) const;
    std::uint64_t GetFileNameCrc(int index) const;
    TKvString<char> GetFileName(int index) const;

    /// The index of the first item with the resource's name, or -1.
    int GetVoidObjectIndex(const CKvResource* resource) const;

    /// Finds a resource and loads it if it was not loaded yet. One whose load failed is given as it
    /// is, until it is released, by its pool or by CKvResource::Release(), and asked for again. No
    /// pool does that for one whose file could not be opened.
    ///
    /// Errors: null for an unknown name, and when the file could not be opened at this call.
    CKvResource* FindVoidObject(const CKvIdentifier& identifier) const;

    /// Finds a resource, loaded or not; null for an unknown name.
    CKvResource* FindExistVoidObject(const CKvIdentifier& identifier) const;

    /// Adds a resource that the program made, under its identifier, with the file at \a name.
    ///
    /// Ownership: the manager's from here on; DestroyObject() destroys it.
    /// Errors:    null, and a resource that a manager has already, change nothing.
    void AddVoidObject(CKvResource* object, const TKvString<char>& name);

    /// Replaces the array's contents by the identifiers of all resources, in the order of items.
    void GetIdentifierArray(CKvArray<CKvIdentifier>& identifiers) const;

    /// Where resources are downloaded from (see AddDownloadedObject()), process-wide; "" at first.
    static void SetDownloadServer(const TKvString<char>& host);

    /// The path that is asked of the server, for whichever resource. Set it before the load.
    static void SetDownloadPath(const TKvString<char>& path);

protected:
    /// Adds every member of an archive, which stays open. Members are found by the CRC that the
    /// archive has of their names, but CreateObject() gets a name only if its text is registered
    /// when the archive is scanned, as by CKvIdentifierManager::LoadHashFile().
    ///
    /// Errors: logged; nothing is added when the archive cannot be opened.
    void ScanBigFile(const TKvString<char>& path);

    /// Adds every file in a folder and below it, with an empty extension; else those with this one,
    /// which is the text behind the last dot of their names, in the same letter case: "txt".
    ///
    /// CreateObject() gets the path: the folder as given and a backslash before each name below it,
    /// as in "sprites\big\hero.txt". The file is found by the identifier that the object then has.
    ///
    /// Errors: logged; a folder that cannot be read adds nothing.
    void ScanDirectory(const TKvString<char>& path, const TKvString<char>& extension);
    void ScanForFileType(const TKvString<char>& path, const char* extension);

    /// Adds an object of CreateObject() that has no file.
    void AddEmptyObjectByName(const TKvString<char>& name);

    /// As AddVoidObject(), for a resource of at most 512 KiB that is downloaded and handed to its
    /// LoadFromMemory().
    void AddDownloadedObject(CKvResource* object, const TKvString<char>& name);

    /// The item at an index, or of a name; null when there is none.
    ItemInfo* GetItem(int index) const;
    ItemInfo* FindItem(const CKvIdentifier& identifier) const;

    /// Loads an item, whatever its status, and records it in the top resource pool.
    ///
    /// Errors: false when the file cannot be opened or fetched: the item's status is failed then,
    ///         and no pool records it. When the file can be opened but not read the result is true
    ///         and the status alone tells. False also without item or object.
    bool LoadResource(ItemInfo* item) const;

    /// Loads all items that are not loaded yet, those included that are added meanwhile.
    ///
    /// Errors: false when one cannot be opened or fetched; those behind it are not tried.
    bool ForceLoadAllResources() const;

    /// Opens an item's file for reading. Ownership: CloseResourceFile()'s to close.
    ///
    /// Errors: null when it cannot be opened, and for what is downloaded.
    CKvFileHandle* OpenResourceFile(const ItemInfo& item) const;
    void CloseResourceFile(const ItemInfo& item, CKvFileHandle* file) const;

    /// The name as it is.
    static TKvString<char> TranslateFilename(const TKvString<char>& name) { return name; }

private:
    /// The number of slots that a new manager has, as a power of two.
    static constexpr int kLog2SlotCount = 13;

    ItemInfo& AppendItem();
    void SetKey(ItemInfo& item, std::uint64_t fileNameCrc);
    void Adopt(CKvResource* object, const TKvString<char>& name, int bigFileIndex);
    bool LoadDownload(CKvResource& object) const;

    CKvArray<std::unique_ptr<ItemInfo>> m_items;

    /// Salted, since names come from archives and may be chosen to collide.
    TKvHashTable<ItemInfo, TKvSaltedPolicy<CKvResourceItemHashingPolicy<ItemInfo>>> m_table{
        kLog2SlotCount};

    CKvArray<std::unique_ptr<CKvBigFile>> m_bigFiles;
    CKvIdentifier m_identifier;
};
