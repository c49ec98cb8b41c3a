#include "resource/KvResourcePreloadManager.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "core/KvTrace.h"
#include "resource/KvResource.h"

namespace {

/// What one of the lists collects, and the function that loads such a resource ahead of time.
struct CListKind
{
    std::optional<CKvResource::EResourceType> type;
    const char* function;  // null where nothing is listed and cleared
};

constexpr std::array kListKinds = {
    CListKind{CKvResource::TYPE_TEXTURE, "CKvTextureManager::GetInstance()->FindTexture"},
    CListKind{CKvResource::TYPE_SUBMESH, "CKvSubMeshManager::GetInstance()->FindSubMesh"},
    CListKind{CKvResource::TYPE_SUBMESH2, nullptr},
    CListKind{CKvResource::TYPE_MESH, "CKvMeshManager::GetInstance()->FindMesh"},
    CListKind{CKvResource::TYPE_SKELETON_ANIMATION,
              "CKvSkeletonAnimationManager::GetInstance()->FindSkeletonAnimation"},
    CListKind{CKvResource::TYPE_PARTICLE_SYSTEM,
              "CKvParticleSystemManager::GetInstance()->FindParticleSystem"},
    CListKind{
        CKvResource::TYPE_PARTICLE_SYSTEM_BUCKET_PRESET,
        "CKvParticleSystemBucketPresetManager::GetInstance()->FindParticleSystemBucketPreset"},
    CListKind{CKvResource::TYPE_SOUND, "CKvSoundManager::GetInstance()->FindSoundResource"},
    CListKind{std::nullopt, "CKvMetaAnimationManager::GetInstance()->FindMetaAnimation"},
    CListKind{CKvResource::TYPE_FONT, "CKvFontManager::GetInstance()->FindFont"},
};

struct CLine
{
    TKvString<char> name;
    unsigned long long crc;
    unsigned int count;
};

/// By bytes as signed numbers, whatever char is here; the shorter of two that start alike first.
bool IsNameLess(const CLine& left, const CLine& right)
{
    const char* const leftText = left.name.GetText();
    const char* const rightText = right.name.GetText();
    return std::lexicographical_compare(
        leftText, leftText + std::strlen(leftText), rightText, rightText + std::strlen(rightText),
        [](char leftByte, char rightByte) {
            return static_cast<signed char>(leftByte) < static_cast<signed char>(rightByte);
        });
}

}  // namespace

CKvResourcePreloadManager& CKvResourcePreloadManager::GetInstance()
{
    static auto* const s_instance = new CKvResourcePreloadManager;
    return *s_instance;
}

CKvResourcePreloadManager::~CKvResourcePreloadManager() = default;

void CKvResourcePreloadManager::AddResource(CKvResource* resource)
{
    static_assert(kListKinds.size() == kListCount);
    if (resource == nullptr)
        return;
    CKvResource::CPreloadNote& note = resource->m_preloadNote;
    for (std::size_t i = 0; i < kListCount && note.list == nullptr; ++i) {
        if (kListKinds[i].type == resource->GetResourceType()) {
            m_lists[i].Add(resource);
            note.list = &m_lists[i];
            note.index = m_lists[i].GetCount() - 1;
        }
    }
    if (note.list != nullptr)
        ++note.loadCount;
}

void CKvResourcePreloadManager::DumpPreloadCode(const char* name)
{
    KvTrace("[PRELOAD] %s\n", name);
    for (std::size_t i = 0; i < kListCount; ++i) {
        if (kListKinds[i].function == nullptr)
            continue;
        std::vector<CLine> lines;
        for (const CKvResource* resource : m_lists[i]) {
            const CKvIdentifier identifier = resource->GetIdentifier();
            lines.push_back({identifier.DebugString(), identifier.GetCrc64(),
                             resource->m_preloadNote.loadCount});
        }
        std::stable_sort(lines.begin(), lines.end(), IsNameLess);
        for (const CLine& line : lines) {
            for (unsigned int load = 0; load < line.count; ++load) {
                KvTrace("%s(CKvIdentifier(0x%016llx, \"%s\"));\n", kListKinds[i].function, line.crc,
                        line.name.GetText());
            }
        }
    }
    KvTrace("[/PRELOAD]\n");
    ClearPreloadCode();
}

void CKvResourcePreloadManager::ClearPreloadCode()
{
    for (std::size_t i = 0; i < kListCount; ++i) {
        while (kListKinds[i].function != nullptr && !m_lists[i].IsEmpty())
            RemoveResource(*m_lists[i][m_lists[i].GetCount() - 1]);
    }
}

void CKvResourcePreloadManager::RemoveResource(CKvResource& resource)
{
    CKvResource::CPreloadNote& note = resource.m_preloadNote;
    if (note.list == nullptr)
        return;
    CKvResource* const last = (*note.list)[note.list->GetCount() - 1];
    (*note.list)[note.index] = last;
    last->m_preloadNote.index = note.index;
    note.list->RemoveLast();
    note = {};
}
