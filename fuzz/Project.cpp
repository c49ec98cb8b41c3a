// Project files: an extension to add and a file.

#include "core/KvId.h"
#include "fuzz/KvFuzz.h"
#include "project/KvDocumentFile.h"
#include "project/KvProject.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "tests/support/KvMemoryDisk.h"

namespace {

constexpr const char* kPath = "a.project";

/// What no project class knows, as a copy.
CKvScriptTreeNode LoadEditorSettings()
{
    CKvScriptTree tree;
    if (KvLoadDocumentFile(tree, kPath) != EKvDocumentFile::Loaded)
        return {};
    const CKvScriptTreeNode* node =
        tree.GetRootNode()->FindChild(KVID::GetSingleton().editor_settings);
    return node != nullptr ? *node : CKvScriptTreeNode();
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CKvFuzzInput input(data, size);
    const std::string extension = input.TakeUpTo('\n');
    CKvMemoryDisk disk;
    disk.Write(kPath, input.TakeRest());

    CKvProject project(kPath);
    project.Initialize();
    CKvScriptTreeNode settings = LoadEditorSettings();
    if (!extension.empty())
        project.AddExtension(KvText(extension));
    const std::string before = disk.Read(kPath);
    if (project.Save()) {
        CKvProject again(kPath);
        KvRequire(again.Initialize(), "a saved project loads");
        for (const TKvString<char>& kept : project.GetExtensions())
            KvRequire(again.ContainsExtension(kept), "no extension gets lost");
        // The first time, what the document lacked got its place at the end.
        KvRequire(again.Save(), "what was loaded can be saved");
        const std::string saved = disk.Read(kPath);
        KvRequire(again.Save() && disk.Read(kPath) == saved, "saving again changes nothing");
        CKvScriptTreeNode settingsAgain = LoadEditorSettings();
        KvRequire(settings == settingsAgain, "what is unknown stays");
        settingsAgain.Empty();
    } else {
        KvRequire(disk.Read(kPath) == before, "a save that fails leaves the file as it was");
    }
    settings.Empty();
    KvRequire(disk.GetOpenCount() == 0 && disk.Names().size() == 1, "no stream or file is left");
    return 0;
}
