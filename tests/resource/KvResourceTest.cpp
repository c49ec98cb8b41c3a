#include "resource/KvResource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "core/KvCrc64.h"
#include "file/KvBigFileGenerator.h"
#include "file/KvFile.h"
#include "file/KvFilePath.h"
#include "platform/KvPlatform.h"
#include "resource/KvPooledObjectManagerManager.h"
#include "resource/KvResourceManagerManager.h"
#include "resource/KvResourcePreloadManager.h"
#include "resource/KvVoidResourceManager.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

class CText : public CKvResource
{
public:
    using CKvResource::CKvResource;
    ~CText() override { onDestroy(); }

    void Unload() override
    {
        onUnload();
        text.clear();
    }
    bool Load(CKvFileHandle* file) override
    {
        int size = 0;
        const std::unique_ptr<unsigned char[]> bytes(
            static_cast<unsigned char*>(CKvFile(file).ReadEntireFile(size)));
        text.assign(bytes.get(), bytes.get() + size);
        onLoad();
        return bytes != nullptr;
    }
    EResourceType GetResourceType() const override { return type; }
    const char* GetTypeName() const override { return "text"; }
    void GetMemoryUsage(int& ram, int&) const override { ram = static_cast<int>(text.size()); }

    std::string text;
    EResourceType type = TYPE_SUBTITLES;
    std::function<void()> onLoad = [] {};
    std::function<void()> onUnload = [] {};
    std::function<void()> onDestroy = [] {};
};

/// Names resources by their file's name without folder.
class CTextManager : public CKvVoidResourceManager
{
public:
    explicit CTextManager(const char* kind = "text") : CKvVoidResourceManager(CKvIdentifier(kind))
    {
        CKvResourceManagerManager::GetInstance().AddManager(this);
    }
    ~CTextManager() override { Release(); }

    using CKvVoidResourceManager::AddEmptyObjectByName;
    using CKvVoidResourceManager::ForceLoadAllResources;
    using CKvVoidResourceManager::GetItem;
    using CKvVoidResourceManager::ScanBigFile;
    using CKvVoidResourceManager::ScanDirectory;
    using CKvVoidResourceManager::ScanForFileType;

    const char* GetTypeName() const override { return "text kind"; }

    CText* Make(const char* name) const { return new CText(CKvIdentifier(name), GetIdentifier()); }
    CText* Load(const char* name) const
    {
        return static_cast<CText*>(FindVoidObject(CKvIdentifier(name)));
    }
    CText* Peek(const char* name) const
    {
        return static_cast<CText*>(FindExistVoidObject(CKvIdentifier(name)));
    }

protected:
    CKvResource* CreateObject(const TKvString<char>& name) override
    {
        return name == "none" ? nullptr : Make(CKvFilePath(name, true).getFileNameExt().GetText());
    }
    void DestroyObject(CKvResource* object) override { delete object; }
    bool LoadObject(CKvResource* object, CKvFileHandle* file) const override
    {
        return object->LoadFromFileHandle(file);
    }
};

/// Every test begins with an empty pool stack and no managers.
class KvResourceTest : public testing::Test
{
protected:
    KvResourceTest()
    {
        s_log.clear();
        KvPlatformSetDebugOutput([](const char* line) {
            s_log += line[0] == 'C' || line[0] == '[' ? line : line + sizeof "hh:mm:ss";
        });
    }
    ~KvResourceTest() override
    {
        m_registry.Shutdown();
        KvPlatformSetDebugOutput(nullptr);
        CKvResourcePreloadManager::GetInstance().Release();
        EXPECT_EQ(m_registry.GetManagerCount(), 0);
    }

    /// The log since the last call.
    static std::string TakeLog() { return std::exchange(s_log, std::string()); }

    static std::string Content(const std::string& member)
    {
        return "in " + member + std::string(50, '.');
    }

    void WriteArchive(const std::string& name, const std::vector<std::string>& members)
    {
        const CKvTemporaryFolder sources;
        CKvBigFileGenerator generator;
        for (const std::string& member : members) {
            const TKvString<char> source(sources.Write(member, Content(member)).c_str());
            const std::uint64_t crc = CreateCrc64_ToLower(
                member.c_str(), static_cast<unsigned int>(member.size()), kKvCrc64Initial);
            ASSERT_TRUE(generator.AddFile(source, TKvString<char>(member.c_str()), crc));
        }
        ASSERT_TRUE(generator.Save(Path(name), false, false));
    }

    TKvString<char> Path(const std::string& name = "") const
    {
        return TKvString<char>((name.empty() ? m_folder.Path() : m_folder.Path(name)).c_str());
    }

    CKvTemporaryFolder m_folder;
    CKvResourceManagerManager& m_registry = CKvResourceManagerManager::GetInstance();
    static inline std::string s_log;
};

TEST_F(KvResourceTest, AManagerKnowsWhatItScannedAndReadsItWhenAsked)
{
    std::filesystem::create_directory(m_folder.Path("sub"));
    m_folder.Write("a.txt", "first a");
    m_folder.Write("sub/a.txt", "second a");
    m_folder.Write("sub/b.txt", "b");
    m_folder.Write("c.TXT", "another extension");
    const std::string unknown = std::to_string(KvPlatformRandomSeed());  // a name never registered
    WriteArchive("archive", {"D.txt", unknown, "e.txt"});
    CTextManager texts;
    EXPECT_EQ(texts.Load("a.txt"), nullptr);
    texts.ScanForFileType(Path(), "txt");
    texts.ScanBigFile(Path("archive"));
    texts.AddEmptyObjectByName("none");
    texts.ScanDirectory(Path("nowhere"), "");
    EXPECT_EQ(TakeLog(), "");
    ASSERT_EQ(texts.GetCount(), 7);

    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(texts.GetVoidObject(i)->GetStatus(), CText::STATUS_NOT_LOADED);
    EXPECT_EQ(texts.GetFileName(2), Path() + "\\sub\\b.txt");
    EXPECT_EQ(texts.GetFileName(3), "D.txt");
    EXPECT_EQ(texts.GetItem(5)->sourceName, Path("archive"));
    EXPECT_EQ(texts.GetVoidObjectIndex(texts.GetVoidObject(1)), 0) << "the first of two names";
    CKvArray<CKvIdentifier> identifiers;
    texts.GetIdentifierArray(identifiers);
    ASSERT_EQ(identifiers.GetCount(), 6);
    EXPECT_TRUE(identifiers[4].IsNull());
    EXPECT_EQ(texts.Load(unknown.c_str()), texts.GetVoidObject(4));

    EXPECT_EQ(texts.Load("A.TXT")->text, "first a");
    EXPECT_EQ(texts.Load("c.txt"), nullptr);
    EXPECT_EQ(texts.Load("none"), nullptr);
    const CKvIdentifier e("e.txt");
    EXPECT_EQ(m_registry.FindResource(e)->GetStatus(), CText::STATUS_NOT_LOADED);
    EXPECT_EQ(m_registry.FindAndLoadResource(e)->GetResourceManager(), &texts);
    EXPECT_EQ(texts.Peek("e.txt")->text, Content("e.txt"));

    TakeLog();
    texts.ScanBigFile(Path("a.txt"));
    EXPECT_EQ(TakeLog(),
              "[  ERROR]   Unable to open bigfile : " + m_folder.Path("a.txt") +
                  "\n[  ERROR]   Unable to initialize text kind manager from bigfile : \"" +
                  m_folder.Path("a.txt") + "\"\n");
}

TEST_F(KvResourceTest, PoolsReleaseNewestFirstAcrossManagers)
{
    for (const char* name : {"one", "two", "three", "four"})
        m_folder.Write(name, name);
    CTextManager texts;
    CTextManager others("others");
    texts.ScanDirectory(Path(), "");
    others.ScanDirectory(Path(), "");
    EXPECT_EQ(texts.Load("four")->text, "four") << "without a pool";
    m_registry.ReleaseResourcePoolAtTopOfStack();
    EXPECT_TRUE(m_registry.GetTopResourcePoolId().IsNull());
    EXPECT_EQ(TakeLog(), "[   INFO]   [+] text 'four' (pool: ) (RAM: 4 VRAM 0)\n");

    m_registry.Initialize();
    texts.Load("one");
    m_registry.CreateNewResourcePoolOnStack(CKvIdentifier("Level"));
    texts.Load("two");
    others.Load("one");
    texts.Load("one");
    texts.Load("three")->Release();
    others.Load("two");
    texts.Load("three");  // recorded once, as the newest
    m_registry.DisableCurrentResourcePool();
    TakeLog();
    m_registry.Report();
    EXPECT_EQ(TakeLog(),
              "[   INFO] Resource pool 'level'\n[   INFO]   three\n[   INFO]   two\n"
              "[   INFO]   one\n[   INFO]   two\n"
              "[   INFO] Resource pool ''\n[   INFO]   one\n");
    CKvPooledObjectManagerManager::GetInstance().SetTopPoolIdentifier(CKvIdentifier("level"));
    m_registry.ReleaseResourcePoolAtTopOfStack();
    EXPECT_TRUE(CKvPooledObjectManagerManager::GetInstance().GetTopPoolIdentifier().IsNull());
    EXPECT_EQ(texts.Peek("one")->text, "one");
    EXPECT_EQ(texts.Peek("two")->text, "");
    EXPECT_EQ(texts.Load("two")->text, "two");
    m_registry.Shutdown();
    EXPECT_TRUE(m_registry.IsShutdown());
    EXPECT_EQ(TakeLog(),
              "[   INFO] [-] Begin release pool 'level'\n"
              "[   INFO]   [-] text 'three'\n[   INFO]   [-] text 'two'\n"
              "[   INFO]   [-] text 'one'\n[   INFO]   [-] text 'two'\n"
              "[   INFO] [-] End release pool 'level'\n"
              "[   INFO]   [+] text 'two' (pool: ) (RAM: 3 VRAM 0)\n"
              "[   INFO] [-] Begin release pool ''\n"
              "[   INFO]   [-] text 'two'\n[   INFO]   [-] text 'one'\n"
              "[   INFO] [-] End release pool ''\n");
}

TEST_F(KvResourceTest, FailedLoadsAreTriedAgainOnceReleased)
{
    WriteArchive("archive", {"cut", "short", "whole"});
    m_folder.Write("loose", "loose");
    const CKvIdentifier loose("loose");
    for (const char* name : {"cut", "short", "whole"})
        CKvIdentifier{name};  // registered for the log
    CTextManager texts;
    texts.ScanBigFile(Path("archive"));
    texts.ScanForFileType(Path(), "");
    CTextManager others("others");
    others.AddVoidObject(others.Make("loose"), Path("loose"));
    m_registry.CreateNewResourcePoolOnStack(CKvIdentifier("menu"));
    const std::string bytes = m_folder.Read("archive");
    std::filesystem::resize_file(m_folder.Path("archive"), bytes.size() - 60);
    texts.Peek("cut")->onLoad = [] { throw std::bad_alloc(); };
    TakeLog();

    // Read but for a part: failed, found as such, and unloaded with the pool.
    for (const std::string name : {"cut", "short", "whole"}) {
        CText* text = texts.Load(name.c_str());
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text->GetStatus(), CText::STATUS_FAILED);
        EXPECT_EQ(texts.Load(name.c_str()), text);
        std::string lines = "[   INFO]   [+] text '";
        lines.append(name).append("' (pool: menu)\n[   INFO]   FAILED to load text resource : \"");
        EXPECT_EQ(TakeLog(), lines.append(name).append("\"\n"));
    }
    m_registry.ReleaseResourcePoolAtTopOfStack();
    m_folder.Write("archive", bytes);
    texts.Peek("cut")->onLoad = [] {};
    for (const std::string name : {"cut", "short", "whole"})
        EXPECT_EQ(texts.Load(name.c_str())->text, Content(name));

    // Not even opened: null once, the next manager is asked, and no pool knows.
    std::filesystem::rename(m_folder.Path("loose"), m_folder.Path("moved"));
    m_registry.CreateNewResourcePoolOnStack(CKvIdentifier("menu"));
    TakeLog();
    EXPECT_EQ(texts.FindVoidObject(loose), nullptr);
    EXPECT_EQ(m_registry.FindAndLoadResource(loose), texts.Peek("loose")) << "failed already";
    EXPECT_EQ(TakeLog(), "");
    m_registry.ReleaseResourcePoolAtTopOfStack();
    EXPECT_EQ(texts.Peek("loose")->GetStatus(), CText::STATUS_FAILED);
    texts.Peek("loose")->Release();
    EXPECT_FALSE(texts.ForceLoadAllResources());
    std::filesystem::rename(m_folder.Path("moved"), m_folder.Path("loose"));
    texts.Peek("loose")->Release();
    EXPECT_TRUE(texts.ForceLoadAllResources());
    EXPECT_EQ(texts.Peek("loose")->text, "loose");

    TakeLog();
    EXPECT_FALSE(texts.Peek("loose")->LoadFromFile("nowhere"));
    EXPECT_EQ(TakeLog(), "[   INFO] Can't load text kind file 'nowhere'\n");
}

TEST_F(KvResourceTest, DestroyedResourcesAndManagersAreGoneEverywhere)
{
    for (const char* name : {"a", "b", "c", "d"})
        m_folder.Write(name, name);
    CTextManager texts;
    m_registry.AddManager(&texts);
    texts.ScanDirectory(Path(), "");
    m_registry.CreateNewResourcePoolOnStack(CKvIdentifier("menu"));
    {
        CTextManager others("others");
        EXPECT_EQ(m_registry.GetManagerCount(), 2);
        others.ScanDirectory(Path(), "");
        CText* mine = others.Make("mine");
        others.AddVoidObject(mine, Path("a"));
        others.AddVoidObject(mine, Path("b"));
        texts.AddVoidObject(mine, "");
        EXPECT_EQ(others.GetCount() + texts.GetCount(), 9);
        for (const char* name : {"a", "b", "c", "d"}) {
            (*name % 2 == 0 ? texts : others).Load(name)->type = CText::TYPE_SOUND;
            m_registry.CreateNewResourcePoolOnStack(CKvIdentifier(name));
            (*name % 2 == 1 ? texts : others).Load(name);
            for (CTextManager* manager : {&texts, &others})
                CKvResourcePreloadManager::GetInstance().AddResource(manager->Peek(name));
        }
        others.Peek("a")->onDestroy = [&] {
            EXPECT_EQ(others.Load("b"), nullptr);
            others.AddVoidObject(others.Make("last will"), "");
        };
    }
    TakeLog();
    m_registry.Report();
    EXPECT_EQ(TakeLog(),
              "[   INFO] Resource pool 'd'\n[   INFO] Resource pool 'c'\n[   INFO]   d\n"
              "[   INFO]   c\n[   INFO] Resource pool 'b'\n[   INFO] Resource pool 'a'\n"
              "[   INFO]   b\n[   INFO]   a\n[   INFO] Resource pool 'menu'\n");
    CKvResourcePreloadManager::GetInstance().DumpPreloadCode("level");
#ifndef NDEBUG
    EXPECT_EQ(std::count(s_log.begin(), s_log.end(), '\n'), 2 + 2) << s_log;
#endif
}

TEST_F(KvResourceTest, LoadsAndUnloadsMayCallBack)
{
    for (const char* name : {"body", "skin", "late"})
        m_folder.Write(name, name);
    CTextManager texts;
    texts.ScanDirectory(Path(), "");
    auto guests = std::make_unique<CTextManager>("guests");
    guests->ScanDirectory(Path(), "");
    CText* body = texts.Peek("body");
    CText* skin = texts.Peek("skin");
    body->onLoad = [&] { EXPECT_EQ(texts.Load("skin"), skin); };
    skin->onLoad = [&] { EXPECT_EQ(texts.Load("body"), body) << "as it is being loaded"; };
    body->onUnload = [&] {
        skin->Release();
        guests.reset();
        texts.Load("late");
    };
    skin->onUnload = [&] { body->Release(); };
    m_registry.Initialize();
    m_registry.CreateNewResourcePoolOnStack(CKvIdentifier("level"));
    guests->Load("skin");
    guests->Load("body");
    texts.Load("body");
    m_registry.ReleaseResourcePoolAtTopOfStack();
    EXPECT_EQ(guests, nullptr);
    EXPECT_EQ(texts.Peek("late")->text, "late");
    TakeLog();
    m_registry.Report();
    EXPECT_EQ(TakeLog(), "[   INFO] Resource pool ''\n[   INFO]   late\n");
}

TEST_F(KvResourceTest, ThePreloadListingLoadsTheSameAgain)
{
    CKvResourcePreloadManager& preload = CKvResourcePreloadManager::GetInstance();
    const struct
    {
        CText::EResourceType type;
        std::string kind;  // empty for what is not listed
        const char* name;
    } rows[] = {{CText::TYPE_TEXTURE, "Texture", "w\xC3\xA4ll"},
                {CText::TYPE_TEXTURE, "Texture", "wall"},
                {CText::TYPE_TEXTURE, "Texture", "wall"},
                {CText::TYPE_SUBMESH, "SubMesh", "handle"},
                {CText::TYPE_SUBMESH2, "", "unlisted"},
                {CText::TYPE_MESH, "Mesh", "door"},
                {CText::TYPE_SKELETON_ANIMATION, "SkeletonAnimation", "walk"},
                {CText::TYPE_PARTICLE_SYSTEM, "ParticleSystem", "fire"},
                {CText::TYPE_PARTICLE_SYSTEM_BUCKET_PRESET, "ParticleSystemBucketPreset", "smoke"},
                {CText::TYPE_SOUND, "Sound", "hit"},
                {CText::TYPE_META_ANIMATION, "", "unlisted too"},
                {CText::TYPE_FONT, "Font", "font"}};
    CTextManager texts;
    std::string expected = "[/PRELOAD]\n";
    for (auto row = std::rbegin(rows); row != std::rend(rows); ++row) {
        if (texts.Peek(row->name) == nullptr)
            texts.AddVoidObject(texts.Make(row->name), m_folder.Write("file", "x").c_str());
        texts.Peek(row->name)->type = row->type;
        texts.Peek(row->name)->Release();
        texts.Load(row->name);
        char crc[24];
        std::snprintf(crc, sizeof crc, "0x%016" PRIx64, CKvIdentifier(row->name).GetCrc64());
        const std::string line = "CKv" + row->kind + "Manager::GetInstance()->Find" + row->kind +
                                 (row->kind == "Sound" ? "Resource" : "") + "(CKvIdentifier(" +
                                 crc + ", \"" + row->name + "\"));\n";
        if (!row->kind.empty())
            expected.insert(0, line);
    }
    TakeLog();
    preload.DumpPreloadCode("level");
    preload.DumpPreloadCode("again");
#ifdef NDEBUG
    EXPECT_EQ(TakeLog(), "");  // no trace in release builds
#else
    EXPECT_EQ(TakeLog(), "[PRELOAD] level\n" + expected + "[PRELOAD] again\n[/PRELOAD]\n");
#endif
}

TEST(KvResourceTypeTest, TypesHaveTheirNames)
{
    std::string names;
    for (int type = -1; type <= 40; ++type)
        names.append(CKvResource::GetResourceTypeName(CKvResource::EResourceType{type})) += ' ';
    EXPECT_EQ(names,
              "  billboard dialog ragdollsettings skeletonanimation materiallibrary mesh "
              "mesh_dynamic submesh metaanimation animation animation_layout particlesystem "
              "particlesystembucketpreset shape sound  animatedtexture shader texture videotexture "
              "gui font level gamerules subtitles spritelibrary navmeshfile dataset  "
              "stringtable_entry    submesh2       ");
    names.clear();
    for (int type = -1; type <= 3; ++type)
        names.append(CKvResource::GetDynamicResourceTypeName(
            CKvResource::EDynamicResourceType{type})) += '|';
    EXPECT_EQ(names, "|entity|ps instance|render target||");
}

}  // namespace
