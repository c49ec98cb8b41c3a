#include "tool/GameFileCreator.h"

#include <array>
#include <cstdio>
#include <new>

#include "core/KvId.h"
#include "core/KvOutOfMemory.h"
#include "core/KvText.h"
#include "core/KvTrace.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "tool/GameDocument.h"
#include "tool/GameRules.h"
#include "tool/TemplateReader.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = -1;

/// The program's name and its six arguments.
constexpr int kArgumentCount = 7;

struct CArguments
{
    TKvString<char> levelPath;
    TKvString<char> rulesPath;
    TKvString<char> outputPath;
    std::array<TKvString<char>, 2> templatePaths;
    bool bigEndian = false;
};

void PrintBanner()
{
    std::printf(
        "Korva Game File Creator v0.1\n"
        "Creates a .game file from a .level file and a .gamerules file\n"
        "\n");
}

bool ReadByteOrder(const char* text, bool& bigEndian)
{
    bigEndian = kvStrcmpNoCase(text, "BE") == 0;
    return bigEndian || kvStrcmpNoCase(text, "LE") == 0;
}

bool ReadArguments(int count, const char* const* values, CArguments& arguments)
{
    if (count != kArgumentCount) {
        std::printf(
            "Usage: KvGameFileCreator.exe example.level example.gamerules [LE|BE]\n"
            "Will output 'example.game' file in example.level file directory.\n");
        return false;
    }
    arguments.levelPath = values[1];
    arguments.rulesPath = values[2];
    arguments.outputPath = values[3];
    arguments.templatePaths = {values[4], values[5]};
    if (!ReadByteOrder(values[6], arguments.bigEndian)) {
        std::fprintf(stderr, "Must supply 'BE' or 'LE' as parameter #6\n");
        return false;
    }
    return true;
}

bool LoadDocument(const TKvString<char>& path, CKvScriptTree& document)
{
    CKvScriptTreeSerializerXML serializer;
    if (serializer.Load(document, path))
        return true;
    KvTrace("ERROR : Unable to load file : \"%s\"\n", path.GetText());
    return false;
}

bool HasRoot(const CKvScriptTree& document, const CKvIdentifier& name)
{
    return document.GetRootNode() != nullptr && document.GetRootNode()->GetIdentifier() == name;
}

bool ReadLevel(const TKvString<char>& path, CKvArray<CMovable>& movables)
{
    CKvScriptTree document;
    if (!LoadDocument(path, document))
        return false;
    if (!HasRoot(document, KVID::GetSingleton().level)) {
        std::printf("Error: Invalid .level file\n");
        return false;
    }
    ScanLevelMovables(*document.GetRootNode(), movables);
    PrintMovables(movables);
    return true;
}

/// A path that is empty or does not load is skipped. Memory that runs out is no reason to skip one:
/// the output would lack what the rules include.
bool ReadTemplates(const TKvString<char>& path, CTemplateList& templates)
{
    CKvScriptTree document;
    CKvScriptTreeSerializerXML serializer;
    const int outOfMemoryBefore = KvGetOutOfMemoryCount();
    const bool loaded = !path.IsEmpty() && serializer.Load(document, path);
    if (KvGetOutOfMemoryCount() != outOfMemoryBefore)
        throw std::bad_alloc();
    if (!loaded)
        return true;
    if (!HasRoot(document, KVID::GetSingleton().template_list)) {
        std::printf("Error: Invalid .template file\n");
        return false;
    }
    return ReadTemplateList(*document.GetRootNode(), templates);
}

bool ReadRules(const TKvString<char>& path, const CKvArray<CMovable>& movables,
               CTemplateList& templates, CFSMInstanceLists& instances)
{
    CKvScriptTree document;
    if (!LoadDocument(path, document))
        return false;
    if (!HasRoot(document, KVID::GetSingleton().game_rule_list)) {
        std::printf("Error: Invalid .gamerules file\n");
        return false;
    }
    return ResolveGameRules(*document.GetRootNode(), movables, templates, instances);
}

/// Each source document is gone before the next is opened: the records hold copies.
int Run(int argumentCount, const char* const* values)
{
    PrintBanner();
    CArguments arguments;
    if (!ReadArguments(argumentCount, values, arguments))
        return kFailure;

    CKvArray<CMovable> movables;
    if (!ReadLevel(arguments.levelPath, movables))
        return kFailure;
    CTemplateList templates;
    for (const TKvString<char>& path : arguments.templatePaths) {
        if (!ReadTemplates(path, templates))
            return kFailure;
    }
    CFSMInstanceLists instances;
    if (!ReadRules(arguments.rulesPath, movables, templates, instances))
        return kFailure;

    return WriteGameDocument(instances, arguments.outputPath, arguments.bigEndian) ? kSuccess
                                                                                   : kFailure;
}

}  // namespace

int RunGameFileCreator(int argumentCount, const char* const* arguments)
{
    try {
        return Run(argumentCount, arguments);
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "Error: Out of memory\n");
        return kFailure;
    }
}
