// A tour of the library: a small arena, drawn as text, in which guards charge at a hero. A game is
// made of the same five parts, in the order of this file:
//
//   1. the archive    files that the game will read, packed into arena.archive
//   2. the resource   CSprite, a picture made of letters, and the manager that knows them all
//   3. the object     CActor, which stands in the arena; its fields can be set, saved and reset
//   4. the behaviour  a state machine for each guard, built from a document by our own classes
//   5. the run        pools for level and menu, frames of a fixed length, and all back to the start
//
// Writes its files, arena.archive and arena.hash to the current folder and prints Arena.txt.

#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "core/KvId.h"
#include "core/KvIdentifierManager.h"
#include "file/KvBigFileGenerator.h"
#include "file/KvFile.h"
#include "file/KvFilePath.h"
#include "file/KvFileSystemUnCached.h"
#include "file/KvWholeFileWriter.h"
#include "fsm/KvAction.h"
#include "fsm/KvFSM.h"
#include "fsm/KvFSMState.h"
#include "fsm/KvTrigger.h"
#include "reflection/KvParameterGroup.h"
#include "reflection/KvReflectionField.h"
#include "resource/KvPooledObjectManager.h"
#include "resource/KvPooledObjectManagerManager.h"
#include "resource/KvResource.h"
#include "resource/KvResourceManagerManager.h"
#include "resource/KvVoidResourceManager.h"
#include "scripttree/KvScriptTreeNode.h"

namespace {

// --- 1. The archive. A build step of the game would make it.

constexpr std::array<const char*, 2> kFiles[] = {
    {"arena.txt",
     "#########################\n#                       #\n#                       #\n"
     "#                       #\n#########################\n"},
    {"menu.txt", "+--------+\n| PAUSED |\n+--------+\n"},
    {"hero.txt", "@"},
    {"guard.txt", "g"},
    {"charging.txt", "G"},
    {"beaten.txt", "x"},
    // What a guard does; part 4 says what settings, triggers and actions mean.
    {"guard.fsm", R"(<fsm>
    <state_list>
        <state name="waiting"><settings sprite="guard.txt"/></state>
        <state name="charging"><settings sprite="charging.txt" goal="hero"/></state>
        <state name="beaten"><settings sprite="beaten.txt"/></state>
    </state_list>
    <default_state name="waiting"/>
    <state_transition_list>
        <state_transition in="waiting" out="charging" trigger="sees_hero">
            <action shout="Halt!"/>
        </state_transition>
        <state_transition in="charging" out="beaten" trigger="meets_hero">
            <action shout="Ouch!"/>
        </state_transition>
    </state_transition_list>
</fsm>
)"}};

bool MakeArchive()
{
    CKvBigFileGenerator generator;
    for (const auto& [name, text] : kFiles) {
        // Members are found by the value of their name, whose text the identifier registers.
        if (KvWriteWholeFile(name, text, kvStrlen(text)) != EKvFileSystemError::Success ||
            !generator.AddFile(name, name, CKvIdentifier(name).GetCrc64())) {
            return false;
        }
    }
    // All registered texts, for a game that did not make the archive itself.
    CKvIdentifierManager::GetInstance().SaveHashFile("arena.hash", /*swapEndian=*/false);
    return generator.Save("arena.archive", /*swapEndian=*/false, /*headerOnly=*/false);
}

// --- 2. The resource: a class for what one file holds, and a manager that knows all of them.

class CSprite : public CKvResource
{
public:
    using CKvResource::CKvResource;

    // The library logs loads and unloads itself (KvLogInit); these say when they happen.
    bool Load(CKvFileHandle* file) override
    {
        std::printf("  loading %s\n", GetIdentifier().DebugCString());
        int size = 0;
        const std::unique_ptr<unsigned char[]> bytes(
            static_cast<unsigned char*>(CKvFile(file).ReadEntireFile(size)));
        m_text.assign(bytes.get(), bytes.get() + size);
        return bytes != nullptr;  // false: the resource is a failed one until its pool goes
    }
    void Unload() override
    {
        std::printf("  unloading %s\n", GetIdentifier().DebugCString());
        m_text.clear();
    }
    EResourceType GetResourceType() const override { return TYPE_SPRITE_LIBRARY; }
    const char* GetTypeName() const override { return "sprite"; }
    void GetMemoryUsage(int& ram, int&) const override { ram = static_cast<int>(m_text.size()); }

    const std::string& GetText() const { return m_text; }

private:
    std::string m_text;
};

class CSpriteManager : public CKvVoidResourceManager
{
public:
    CSpriteManager() : CKvVoidResourceManager(CKvIdentifier("sprite"))
    {
        CKvResourceManagerManager::GetInstance().AddManager(this);  // see LoadSprite()
    }
    ~CSpriteManager() override { Release(); }  // while DestroyObject() can still be called

    using CKvVoidResourceManager::ScanBigFile;
    const char* GetTypeName() const override { return "sprite"; }

protected:
    CKvResource* CreateObject(const TKvString<char>& name) override
    {
        if (CKvFilePath(name, true).getFileExt() != "txt")
            return nullptr;  // another kind's file
        return new CSprite(CKvIdentifier(name), GetIdentifier());
    }
    void DestroyObject(CKvResource* object) override { delete object; }
    bool LoadObject(CKvResource* object, CKvFileHandle* file) const override
    {
        return object->LoadFromFileHandle(file);
    }
};

/// The register finds resources in all managers. What was not loaded before is loaded now, into the
/// pool on top of the stack.
CKvResource* LoadSprite(const char* name)
{
    return CKvResourceManagerManager::GetInstance().FindAndLoadResource(CKvIdentifier(name));
}

/// The text of a sprite; "" for anything else.
std::string TextOf(const CKvResource* resource)
{
    if (resource == nullptr || resource->GetTypeIdentifier() != CKvIdentifier("sprite"))
        return "";
    return static_cast<const CSprite*>(resource)->GetText();
}

// --- 3. The object: made while the game runs, kept in named pools.

class CActor : public CKvManaged
{
public:
    static inline const CKvRTTI TYPE{"CActor", &CKvManaged::TYPE};  // to know one: see FindActor()

    using CKvManaged::CKvManaged;

    const CKvRTTI& GetRtti() const override { return TYPE; }
    CKvIdentifier GetPoolIdentifier() const override { return KVID::GetSingleton().level; }

    /// The fields that generic code may touch, described once for all actors.
    const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const override
    {
        static const auto s_fields = [this] {
            auto fields = CKvManaged::GetReflectionInformationArray();
            fields.Add(KvDescribeField("position", this, position));
            fields.Add(KvDescribeField("speed", this, speed));
            fields.Add(KvDescribeField("sprite", this, sprite));
            return fields;
        }();
        return s_fields;
    }

    void WalkTo(const CKvVector2& goal, float dt)
    {
        const CKvVector2 way = goal - position;
        const float length = way.GetLength();
        const float step = speed * dt;
        position = length > step ? position + way * (step / length) : goal;
    }

    CKvVector2 position;
    float speed = 2.0F;             // columns a second
    CKvResource* sprite = nullptr;  // a CSprite; fields know resources by their base
    CKvFSM machine;                 // empty for the hero
};

class CActorManager : public CKvPooledObjectManager
{
public:
    CActorManager() : CKvPooledObjectManager(CKvIdentifier("actors")) {}

    CKvIdentifier GetObjectTypeIdentifier() const override { return CKvIdentifier("actor"); }
    const char* GetTypeName() const override { return "actor"; }

    CActor& Make(const CKvIdentifier& name, const CKvVector2& position)
    {
        auto* const actor = new CActor(name);
        actor->position = position;
        AddObject(actor->GetPoolIdentifier(), actor);  // owned by the pool from here on
        return *actor;
    }
};

/// The registry finds objects in all managers, by pool and name. Null when it is no actor.
CActor* FindActor(const CKvIdentifier& name)
{
    CKvManaged* const object =
        CKvPooledObjectManagerManager::GetInstance().FindObject(KVID::GetSingleton().level, name);
    const bool isActor = object != nullptr && object->GetRtti().IsDerived(CActor::TYPE);
    return isActor ? static_cast<CActor*>(object) : nullptr;
}

/// What an editor does: it knows objects and their fields by name and kind only.
void EditFloat(CKvManaged& object, const CKvIdentifier& name, float value)
{
    for (const CKvReflectionInformation& field : object.GetReflectionInformationArray()) {
        if (field.GetIdentifier() != name || field.GetType() != field.TYPE_FLOAT)
            continue;
        std::printf("%s %s: %g -> %g\n", object.GetIdentifier().DebugCString(), name.DebugCString(),
                    field.GetValueFloat(&object), value);
        field.SetValueFloat(&object, value);
    }
}

// --- 4. The behaviour: what the names in guard.fsm mean.

/// A state shows its sprite and walks to its goal, if it has one.
class CGuardState : public CKvFSMState
{
public:
    CGuardState(CActor& guard, CKvFSM& fsm) : CKvFSMState(CKvIdentifier(), &fsm), m_guard(guard) {}

    bool SerializeFrom(CKvScriptTreeNode* node, CKvFSM* fsm) override
    {
        if (const CKvScriptTreeNode* settings = node->FindChild(CKvIdentifier("settings"))) {
            m_sprite = settings->GetAttributeValueAsString(CKvIdentifier("sprite"));
            m_goal.Set(settings->GetAttributeValueAsString(CKvIdentifier("goal")));
        }
        return CKvFSMState::SerializeFrom(node, fsm);  // takes the name and adds itself
    }
    void OnEnter() override { m_guard.sprite = LoadSprite(m_sprite.GetText()); }
    void OnUpdate(float dt) override
    {
        if (const CActor* goal = FindActor(m_goal))
            m_guard.WalkTo(goal->position, dt);
        CKvFSMState::OnUpdate(dt);  // asks the transitions
    }

private:
    CActor& m_guard;
    TKvString<char> m_sprite;
    CKvIdentifier m_goal;
};

/// Fires when the hero is near: as near as guards see, which is tuned, or within reach.
class CHeroTrigger : public CKvTrigger
{
public:
    CHeroTrigger(const TKvString<char>& name, const CActor& guard, const CKvParameterFloat& sight)
        : CKvTrigger(name), m_guard(guard), m_sight(sight)
    {
    }
    bool IsTriggered() override
    {
        const CActor* const hero = FindActor(CKvIdentifier("hero"));
        const float near = GetTriggerString() == "sees_hero" ? m_sight.GetValue() : 1.0F;
        return hero != nullptr && (hero->position - m_guard.position).GetLength() <= near;
    }

private:
    const CActor& m_guard;
    const CKvParameterFloat& m_sight;
};

class CShout : public CKvAction
{
public:
    CShout(const CActor& guard, const TKvString<char>& text) : m_guard(guard), m_text(text) {}
    void Execute() override
    {
        std::printf("%s: %s\n", m_guard.GetIdentifier().DebugCString(), m_text.GetText());
    }

private:
    const CActor& m_guard;
    TKvString<char> m_text;
};

/// Builds a guard's machine from its document. The machine owns what the factories make, and keeps
/// them: what they refer to outlives it.
bool GiveMachine(CActor& guard, const CKvParameterFloat& sight)
{
    CKvFSMFactories factories;
    factories.state = [&](CKvScriptTreeNode&, CKvFSM& fsm) {
        return std::make_unique<CGuardState>(guard, fsm);
    };
    factories.trigger = [&](const TKvString<char>& name, CKvScriptTreeNode&) {
        return std::make_unique<CHeroTrigger>(name, guard, sight);
    };
    factories.action = [&](CKvScriptTreeNode& node) {
        const CKvIdentifier shout("shout");
        return std::make_unique<CShout>(guard, node.GetAttributeValueAsString(shout));
    };
    guard.machine.SetFactories(factories);
    return guard.machine.Initialize("guard.fsm");  // from the archive, see main()
}

// --- 5. The run.

/// Runs so many frames, then draws the level: its actors over the picture of the arena.
void Run(const CActorManager& actors, int frameCount)
{
    constexpr float kFrameTime = 0.25F;  // fixed, so that every run is the same
    constexpr int kRowLength = 26;
    const CKvObjectPool& level = *actors.FindPool(KVID::GetSingleton().level);
    const auto actorAt = [&](int i) { return static_cast<CActor*>(level.GetObject(i)); };
    for (int frame = 0; frame < frameCount; ++frame) {
        actorAt(0)->WalkTo(CKvVector2(23.0F, 2.0F), kFrameTime);  // the hero, who came first
        for (int i = 0; i < level.GetObjectCount(); ++i)
            actorAt(i)->machine.Update(kFrameTime);
    }
    std::string screen = TextOf(LoadSprite("arena.txt"));
    for (int i = 0; i < level.GetObjectCount(); ++i) {
        const auto [x, y] = actorAt(i)->position;
        const std::string text = TextOf(actorAt(i)->sprite);
        const long at = kRowLength * std::lround(y) + std::lround(x);
        screen.replace(static_cast<std::size_t>(at), text.size(), text);
    }
    std::printf("%s", screen.c_str());
}

bool PlayLevel(CActorManager& actors, CKvParameterFloat& sight)
{
    auto& registry = CKvPooledObjectManagerManager::GetInstance();
    if (TextOf(LoadSprite("arena.txt")).empty())
        return false;
    CActor& hero = actors.Make(CKvIdentifier("hero"), CKvVector2(1.0F, 2.0F));
    hero.sprite = LoadSprite("hero.txt");
    for (const float x : {10.0F, 20.0F}) {
        const CKvIdentifier name = registry.GenerateIdentifierSuffix(CKvIdentifier("guard"));
        if (!GiveMachine(actors.Make(name, CKvVector2(x, 1.0F)), sight))
            return false;
    }
    EditFloat(hero, CKvIdentifier("speed"), 4.0F);

    registry.SaveVariables();  // the fields of all actors
    Run(actors, 4);
    Run(actors, 4);

    // While the menu is open its pool is on top: what is loaded for it goes with it.
    auto& resources = CKvResourceManagerManager::GetInstance();
    resources.CreateNewResourcePoolOnStack(CKvIdentifier("menu"));
    std::printf("%s", TextOf(LoadSprite("menu.txt")).c_str());
    resources.ReleaseResourcePoolAtTopOfStack();

    sight.SetValue(4.0F);  // the guard that still waits sees less far from here on
    Run(actors, 14);
    registry.ResetVariables();  // as before the run; machines stay in their states
    std::printf("reset\n");
    Run(actors, 0);
    return true;
}

}  // namespace

int main()
{
    if (!MakeArchive())
        return 1;

    // From here on it is the game, which knows the archive and the names in it.
    CKvIdentifierManager::GetInstance().LoadHashFile("arena.hash", /*swapEndian=*/false);
    if (!CKvFileSystemUnCached::AddBigFile("arena.archive"))
        return 1;
    CSpriteManager sprites;
    sprites.ScanBigFile("arena.archive");
    CKvParameterGroup tuning("guards");  // what an editor shows as a panel of sliders
    auto* const sight = tuning.AddParameterFloat("sight", 6.0F, 0.0F, 24.0F, /*step=*/0.5F);
    CActorManager actors;
    actors.Initialize();
    auto& resources = CKvResourceManagerManager::GetInstance();
    resources.Initialize();

    // The level is a pool of resources and one of actors, under one name.
    const CKvIdentifier level = KVID::GetSingleton().level;
    resources.CreateNewResourcePoolOnStack(level);
    CKvPooledObjectManagerManager::GetInstance().SetTopPoolIdentifier(level);
    const bool isPlayed = PlayLevel(actors, *sight);
    actors.Clear(level);                          // the actors, which have the sprites, then
    resources.ReleaseResourcePoolAtTopOfStack();  // what was loaded, newest first

    actors.Release();
    resources.Shutdown();
    return isPlayed ? 0 : 1;
}
