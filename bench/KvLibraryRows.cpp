#include "bench/KvLibraryRows.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "bench/KvBenchFile.h"
#include "bench/KvMeasureInTurn.h"
#include "bench/KvMeasureProcesses.h"
#include "bench/KvPeerTranslation.h"
#include "bench/KvTemporaryFolder.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

constexpr double kMegabyte = 1e6;

/// Another program that makes a binary file of the level's content, and back.
struct CPeer
{
    std::string_view row;
    const char* name;
    std::string text;
    std::string decodedText;
    CKvProcess encode;
    CKvProcess decode;
};

CPeer FlatPeer(const std::string& folder, const std::string& program)
{
    const std::string schema = folder + "/tree.fbs";
    const std::string decoded = folder + "/decoded";
    return {"8a",
            "flatc",
            folder + "/tree.json",
            decoded + "/tree.json",
            {{program, "-b", "-o", folder, schema, folder + "/tree.json"}},
            {{program, "--json", "--strict-json", "--raw-binary", "-o", decoded, schema, "--",
              folder + "/tree.bin"}}};
}

CPeer ProtoPeer(const std::string& folder, const std::string& program)
{
    const std::string text = folder + "/tree.txt";
    const std::string binary = folder + "/tree.pb";
    const std::string decoded = folder + "/decoded/tree.txt";
    const std::string schemas = "--proto_path=" + folder;
    return {"8b",
            "protoc",
            text,
            decoded,
            {{program, "--encode=Node", schemas, "tree.proto"}, text, binary},
            {{program, "--decode=Node", schemas, "tree.proto"}, binary, decoded}};
}

/// Finds the peers that are installed; for the others the row says that they are not.
std::vector<CPeer> FindPeers(const std::string& folder, CKvFindings& findings)
{
    std::vector<CPeer> peers;
    for (CPeer& peer : std::vector<CPeer>{FlatPeer(folder, KvFindProgram("flatc")),
                                          ProtoPeer(folder, KvFindProgram("protoc"))}) {
        if (peer.encode.command.front().empty())
            findings.push_back({peer.row, std::nullopt, KvNote("%s is not installed", peer.name)});
        else
            peers.push_back(std::move(peer));
    }
    return peers;
}

bool PrepareTexts(const CKvBenchRun& run, const std::string& folder, const CKvInputPaths& inputs)
{
    CKvProcessCost ignored;
    return KvWriteWholeFile(folder + "/tree.fbs", std::string(kKvFlatSchema)) &&
           KvWriteWholeFile(folder + "/tree.proto", std::string(kKvProtoSchema)) &&
           !KvMakeFolder(folder, "decoded").empty() &&
           KvMeasureProcess(
               run.Child("translate", {inputs.level, folder + "/tree.json", folder + "/tree.txt"}),
               ignored);
}

/// What the peer has encoded must be the whole content, or its time says nothing.
bool CheckContent(const CPeer& peer)
{
    CKvProcessCost ignored;
    if (KvMeasureProcess(peer.encode, ignored) && KvMeasureProcess(peer.decode, ignored) &&
        KvAreAlikeButForSpace(peer.text, peer.decodedText))
        return true;
    std::fprintf(stderr, "bench: %s does not give the content back\n", peer.name);
    return false;
}

}  // namespace

bool KvMeasureLibrary(const CKvBenchRun& run, CKvFindings& findings)
{
    const CKvTemporaryFolder temporary;
    const std::string& folder = temporary.Path();
    CKvInputPaths inputs;
    if (!KvPrepareInputs({}, folder, "10MB", inputs) || !PrepareTexts(run, folder, inputs))
        return false;
    const std::string binary = folder + "/tree.tml";
    CKvProcess load = run.Child("load-binary", {binary});
    CKvProcess read = run.Child("read-whole", {binary});
    load.output = folder + "/load.seconds";
    read.output = folder + "/read.seconds";
    std::vector<CKvMeasuredProcess> measured = {
        {run.Child("convert", {inputs.level, binary})}, {load, true}, {read, true}};
    const std::vector<CPeer> peers = FindPeers(folder, findings);
    for (const CPeer& peer : peers) {
        if (!CheckContent(peer))
            return false;
        measured.push_back({peer.encode});
    }
    if (!KvMeasureProcesses(measured, run.rounds))
        return false;

    const auto seconds = [&measured](std::size_t i) { return measured[i].cost.CpuSeconds(); };
    for (std::size_t i = 0; i < peers.size(); ++i)
        findings.push_back({peers[i].row, seconds(0) / seconds(3 + i),
                            KvNote("10 MB level; library %.3f s, %s %.3f s", seconds(0),
                                   peers[i].name, seconds(3 + i))});
    const auto binaryBytes = static_cast<double>(KvFileBytes(binary));
    findings.push_back({"9", seconds(1) / seconds(2),
                        KvNote("%.1f MB; load %.4f s, reading %.4f s", binaryBytes / kMegabyte,
                               seconds(1), seconds(2))});
    return true;
}

bool KvRunConvert(std::span<const char* const> arguments)
{
    CKvScriptTree tree;
    CKvScriptTreeSerializerXML xml;
    CKvScriptTreeSerializerTML binary;
    return arguments.size() == 2 && xml.Load(tree, arguments[0]) &&
           binary.Save(tree, arguments[1], false);
}

bool KvRunLoadBinary(std::span<const char* const> arguments)
{
    if (arguments.size() != 1)
        return false;
    const TKvString<char> path = arguments[0];
    CKvScriptTree tree;
    CKvScriptTreeSerializerTML binary;
    bool loaded = false;
    KvPrintSeconds(KvCpuSeconds([&] { loaded = binary.Load(tree, path); }));
    // Releasing the tree is no part of the load.
    if (loaded)
        std::_Exit(0);
    return false;
}

bool KvRunReadWhole(std::span<const char* const> arguments)
{
    if (arguments.size() != 1)
        return false;
    bool read = false;
    KvPrintSeconds(KvCpuSeconds([&] {
        // Not a string, which would fill itself with zeros first.
        const std::uint64_t sizeBytes = KvFileBytes(arguments[0]);
        const std::unique_ptr<char[]> block(new char[sizeBytes]);
        std::FILE* file = std::fopen(arguments[0], "rb");
        read = file != nullptr && std::fread(block.get(), 1, sizeBytes, file) == sizeBytes;
        if (file != nullptr)
            std::fclose(file);
    }));
    return read;
}
