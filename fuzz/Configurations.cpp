// Configurations files, saved again, and the commands of their builds.

#include "fuzz/KvFuzz.h"
#include "project/KvConfigurationHelper.h"
#include "project/KvConfigurationManager.h"
#include "scripttree/KvScriptTreeNode.h"
#include "tests/support/KvMemoryDisk.h"

namespace {

constexpr const char* kPath = "a.configurations";

/// What the configurations of the corpus call their project.
constexpr const char* kProjectPath = "./harbour.project";
constexpr const char* kProject =
    "<project project_version='1.1'><project_settings><general>"
    "<setting name='generaltmp' value='tmp'/></general></project_settings></project>";

/// A build's architectures and a file's builds are taken as they come, but not without end.
constexpr int kMostBuilds = 8;
constexpr int kMostArchitectures = 8;

/// All that a manager holds, in one document.
void Describe(const CKvConfigurationManager& manager, CKvScriptTree& tree)
{
    CKvScriptTreeNode* root = tree.CreateRootNode(CKvIdentifier("all"));
    manager.GetProject()->ToCKvScriptTreeNode(root);
    manager.GetSourceControl()->ToCKvScriptTreeNode(root);
    for (const TKvString<char>& name : manager.GetListBuild())
        root->AddChild(manager.GetBuild(CKvIdentifier(name))->ToCKvScriptTreeNode());
    for (const TKvString<char>& name : manager.GetListDistrib())
        root->AddChild(manager.GetDistrib(CKvIdentifier(name))->ToCKvScriptTreeNode());
}

void MakeCommands(const CKvConfigurationManager& manager)
{
    int left = kMostBuilds;
    for (const TKvString<char>& name : manager.GetListBuild()) {
        if (left-- == 0)
            return;
        CKvConfigurationHelper helper;
        helper.Initialize(kPath, manager, name, "tools/");
        TKvString<char> program;
        TKvString<char> arguments;
        for (int i = 0; i < kMostArchitectures && helper.HasAnotherArchitecture(); ++i) {
            helper.GetBuildProjectCommand(program, arguments);
            helper.GetCompileProjectCommand(program, arguments);
        }
        helper.GetCompileAssetsCommand(program, arguments);
        helper.GetConfigurePackagerCommand(program, arguments);
        helper.GetPackageCommand(program, arguments);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CKvMemoryDisk disk;
    const std::string file = CKvFuzzInput(data, size).TakeRest();
    disk.Write(kPath, file);
    disk.Write(kProjectPath, kProject);
    CKvConfigurationManager manager;
    manager.Initialize(kPath);
    KvRequire(manager.GetProject() != nullptr && disk.Read(kPath) == file,
              "a file of any bytes is read and stays");
    CKvScriptTree loaded;
    Describe(manager, loaded);
    KvRequire((manager.AllWellFormedBuild() + manager.AllWellFormedDistrib()).GetText() != nullptr,
              "complaints are texts");
    MakeCommands(manager);

    manager.SaveAll();
    const std::string saved = disk.Read(kPath);
    CKvConfigurationManager again;
    again.Initialize(kPath);
    CKvScriptTree loadedAgain;
    Describe(again, loadedAgain);
    KvRequire(*loaded.GetRootNode() == *loadedAgain.GetRootNode(), "saving keeps all that is held");
    again.SaveAll();
    KvRequire(disk.Read(kPath) == saved, "saving again changes nothing");
    KvRequire(disk.GetOpenCount() == 0 && disk.Names().size() == 2, "no stream or file is left");
    return 0;
}
