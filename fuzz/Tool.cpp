// The whole tool in memory: a level, rules and up to two template files, parted by zero bytes.

#include <array>
#include <vector>

#include "fuzz/KvFuzz.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "tests/support/KvMemoryDisk.h"
#include "tool/GameFileCreator.h"

namespace {

constexpr std::array kInputs = {"a.level", "a.gamerules", "1.template", "2.template"};
constexpr const char* kOutput = "a.game";

int Run(const char* byteOrder)
{
    const std::array arguments = {"tool",     kInputs[0], kInputs[1], kOutput,
                                  kInputs[2], kInputs[3], byteOrder};
    return RunGameFileCreator(static_cast<int>(arguments.size()), arguments.data());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CKvFuzzInput input(data, size);
    CKvMemoryDisk disk;
    for (const char* name : kInputs)
        disk.Write(name, input.TakeUpTo('\0'));
    const std::vector<std::string> inputs = disk.Names();

    const bool succeeds = Run("BE") == 0;
    const std::string bigEndian = disk.Read(kOutput);
    KvRequire(disk.Names().size() == inputs.size() + (succeeds ? 1 : 0),
              "a run leaves its output and nothing else");
    disk.Write(kOutput, "old");
    KvRequire((Run("LE") == 0) == succeeds, "the byte order does not decide about success");
    const std::string littleEndian = disk.Read(kOutput);
    if (succeeds) {
        CKvScriptTree game;
        KvRequire(CKvScriptTreeSerializerTML().Load(game, kOutput), "the output loads");
        KvRequire(game.GetRootNode()->GetIdentifier() == CKvIdentifier("game"),
                  "the output is a game's document");
        KvRequire(littleEndian.size() == bigEndian.size(), "both byte orders have the same size");
    } else {
        KvRequire(littleEndian == "old", "a failure leaves the old output");
    }
    KvRequire(disk.GetOpenCount() == 0 && disk.Names().size() == inputs.size() + 1,
              "no stream or file is left");
    return 0;
}
