// A kind of managed objects and its manager, as a game would write them.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "reflection/KvReflectionField.h"
#include "resource/KvPooledObjectManager.h"
#include "resource/KvPooledObjectManagerManager.h"

class CEntity : public CKvManaged
{
public:
    CEntity(const char* pool, const CKvIdentifier& name) : CKvManaged(name), m_pool(pool)
    {
        s_living.push_back(this);
    }
    ~CEntity() override
    {
        std::erase(s_living, this);
        s_log.append(" ~").append(GetIdentifier().DebugCString());
        onDelete();
    }

    void Release() override
    {
        s_log.append(" ").append(GetIdentifier().DebugCString());
        ++releaseCount;
        onRelease();
    }
    CKvIdentifier GetPoolIdentifier() const override { return m_pool; }
    const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const override
    {
        static const CKvArray<CKvReflectionInformation> s_fields = [this] {
            CKvArray<CKvReflectionInformation> fields = CKvManaged::GetReflectionInformationArray();
            fields.Add(KvDescribeField("health", this, health));
            return fields;
        }();
        return s_fields;
    }

    static inline std::vector<CEntity*> s_living;
    static inline std::string s_log;

    std::function<void()> onRelease = [] {};
    std::function<void()> onDelete = [] {};
    int releaseCount = 0;
    int health = 100;

private:
    CKvIdentifier m_pool;
};

class CEntityManager : public CKvPooledObjectManager
{
public:
    CEntityManager() : CKvPooledObjectManager(CKvIdentifier("entities")) {}

    CKvIdentifier GetObjectTypeIdentifier() const override { return CKvIdentifier("entity"); }
    const char* GetTypeName() const override { return "entity"; }

    CEntity* Make(const char* pool, const char* name)
    {
        auto* const entity = new CEntity(pool, CKvIdentifier(name));
        AddObject(CKvIdentifier(pool), entity);
        return entity;
    }
    void Destroy(CKvManaged* entity) { DestroyObject(entity); }
    void Rename(CKvManaged* entity, const char* name) { RenameObject(entity, CKvIdentifier(name)); }

protected:
    void OnInitialize() override { LogHook(" OnInitialize="); }
    void OnInitialized() override { LogHook(" OnInitialized="); }
    void OnRelease() override { LogHook(" OnRelease="); }
    void OnReleased() override { LogHook(" OnReleased="); }

private:
    /// With the number of pools and of managers in the registry, as the hook meets them.
    void LogHook(const std::string& name) const
    {
        const auto& registry = CKvPooledObjectManagerManager::GetInstance();
        CEntity::s_log += name + std::to_string(GetPoolCount()) + "," +
                          std::to_string(registry.GetManagerCount());
    }
};
