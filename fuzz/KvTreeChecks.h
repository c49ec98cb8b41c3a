// The rules that hold for every script tree, wherever it came from.

#pragma once

#include "core/KvIdentifierManager.h"
#include "fuzz/KvFuzz.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "tests/support/KvMemoryDisk.h"

/// Forgets all names, which would otherwise outlast the input that had them. Only for targets that
/// write none of the vocabulary's names.
inline void KvForgetNames()
{
    CKvIdentifierManager::GetInstance().Release();
}

inline std::string KvSaveBinary(CKvScriptTree& tree, CKvMemoryDisk& disk, bool bigEndian)
{
    KvRequire(CKvScriptTreeSerializerTML().Save(tree, "tree", bigEndian), "a tree can be saved");
    return disk.Read("tree");
}

/// Saves and loads in turn. Numbers take their stored form at the first saving, and one that is
/// infinite becomes a text at the second; from then on nothing changes.
inline void KvRequireBinaryRoundTrip(CKvScriptTree& tree)
{
    CKvMemoryDisk disk;
    const std::size_t bigEndianSize = KvSaveBinary(tree, disk, true).size();
    std::string images[3] = {KvSaveBinary(tree, disk, false)};
    KvRequire(images[0].size() == bigEndianSize, "both byte orders have the same size");
    for (int i = 1; i < 3; ++i) {
        CKvScriptTree loaded;
        KvRequire(CKvScriptTreeSerializerTML().Load(loaded, "tree"), "what was saved loads");
        images[i] = KvSaveBinary(loaded, disk, false);
    }
    KvRequire(images[2] == images[1], "what was loaded is saved as it is");
    KvRequire(disk.GetOpenCount() == 0 && disk.Names().size() == 1, "no stream or file is left");
}
