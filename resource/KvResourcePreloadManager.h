// Notes which resources are loaded, so that a list of them can be written as source statements that
// load the same ones ahead of time in a later version of the game.

#pragma once

#include <array>
#include <cstddef>

#include "core/KvArray.h"

class CKvResource;

/// Fields stand in the documented order.
///
/// Collected are textures, submeshes, submeshes of the second kind, meshes, skeleton animations,
/// particle systems and their bucket presets, sounds and fonts. Those of the second kind are not
/// listed and not cleared; the listing has a place for meta animations, which nothing fills.
///
/// Ownership: resources are not owned; one that is destroyed leaves the listing.
class CKvResourcePreloadManager
{
public:
    /// The one instance, made on the first call and never destroyed.
    static CKvResourcePreloadManager& GetInstance();

    CKvResourcePreloadManager(const CKvResourcePreloadManager&) = delete;
    CKvResourcePreloadManager& operator=(const CKvResourcePreloadManager&) = delete;
    virtual ~CKvResourcePreloadManager();

    /// Notes one load of a resource. CKvResource::LoadFromFileHandle() calls it.
    void AddResource(CKvResource* resource);

    /// Writes one statement for each load to the developer trace (KvTrace(), silent in release
    /// builds), kind by kind and by the names' texts within a kind, between "[PRELOAD] NAME" and
    /// "[/PRELOAD]". Then clears the listing.
    void DumpPreloadCode(const char* name);

    void ClearPreloadCode();

    /// The same as ClearPreloadCode().
    void Release() { ClearPreloadCode(); }

private:
    friend class CKvResource;

    static constexpr std::size_t kListCount = 10;

    CKvResourcePreloadManager() = default;

    static void RemoveResource(CKvResource& resource);

    /// Each resource once, however often it was loaded; it knows its place and its loads.
    std::array<CKvArray<CKvResource*>, kListCount> m_lists;
};
