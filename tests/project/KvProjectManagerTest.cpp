// The current project, and what makes a folder a workspace.

#include "project/KvProjectManager.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "project/KvProject.h"
#include "scripttree/KvScriptTreeNode.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

TEST(KvProjectManagerTest, LoadingMakesCurrentWhateverTheFileHolds)
{
    const CKvTemporaryFolder folder;
    CKvProjectManager& manager = CKvProjectManager::GetInstance();
    EXPECT_EQ(manager.GetCurrentProjectExtensions().GetCount(), 0);
    manager.AddExtensionInCurrentProject("x");

    const std::string path =
        folder.Write("p",
                     "<p project_version='1.1'><project_settings/><editor_settings><a b='c'/>"
                     "</editor_settings></p>");
    EXPECT_TRUE(manager.LoadProject(path.c_str()));
    manager.AddExtensionInCurrentProject("x");
    EXPECT_EQ(manager.GetCurrentProjectExtensions().GetCount(), 1);
    const CKvOwnedScriptTreeNode settings(manager.GetEditorProjectSettings());
    ASSERT_NE(settings, nullptr);
    EXPECT_EQ(settings->GetChild(0)->GetAttribute(0).GetValue(), "c");

    EXPECT_TRUE(manager.LoadProject(folder.Path("absent").c_str()));
    EXPECT_EQ(manager.GetEditorProjectSettings(), nullptr);
    manager.SetCurrentProject(nullptr);
}

TEST(KvProjectManagerTest, AWorkspaceHasAllFoldersAndGenericNoOther)
{
    const CKvTemporaryFolder folder;
    const TKvString<char> path = (folder.Path("w") + '\\').c_str();
    const auto isAcceptable = [&] { return CKvProjectManager::IsAcceptableWorkspace(path); };
    std::vector<std::string> names = {"", "/Game", "/Levels", "/Videos", "/Resources"};
    std::istringstream resources(
        "Animations AudioStreams DataSets Fonts FSM Material Meshes MetaAnimation ParticleSystems "
        "Prefab Ragdoll Shaders Shapes Sounds Sprites String Subtitles Textures");
    for (std::string name; resources >> name;)
        names.push_back("/Resources/" + name);
    const fs::path generic = folder.Path("w/Generic");
    for (const std::string& name : names)
        fs::create_directories(generic.string() + name);
    fs::create_directory(generic / "Resources/More");
    EXPECT_TRUE(isAcceptable());
    EXPECT_FALSE(CKvProjectManager::IsAcceptableWorkspace(folder.Path("w").c_str()));
    for (const std::string& name : names) {
        const fs::path removed = generic.string() + name;
        fs::rename(removed, folder.Path("elsewhere"));
        EXPECT_FALSE(isAcceptable()) << name;
        fs::create_directory_symlink(folder.Path("elsewhere"), removed);
        EXPECT_FALSE(isAcceptable()) << name << " is a link";
        fs::remove(removed);
        fs::rename(folder.Path("elsewhere"), removed);
    }
    fs::create_directory(generic / "Fifth");
    EXPECT_FALSE(isAcceptable());
}

}  // namespace
