// Compressed blocks: what is written, what comes back, and what no block can do to its reader.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>

#include "core/KvCrc64.h"
#include "file/KvMemoryDecompressor.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvProcess.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

std::string Random(std::size_t size)
{
    std::minstd_rand random(1);
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random() >> 7);
    return bytes;
}

std::string Text(std::size_t size)
{
    std::string text;
    for (int i = 0; text.size() < size; ++i)
        text.append("<entity name=\"door_").append(std::to_string(i * i)).append("\"/>\n");
    return text.substr(0, size);
}

/// Expands with at most \a piece bytes a call, of output or of both input and output.
std::string Expand(const std::string& block, std::size_t size, int piece, bool byInput = false)
{
    CKvMemoryDecompressor decompressor;
    decompressor.Initialize(block.data(), static_cast<int>(block.size()));
    std::string out(size, '?');
    std::size_t produced = 0;
    const std::size_t mostCalls = block.size() + size + 1;
    for (std::size_t call = 0; call < mostCalls && produced < size; ++call) {
        const int room = std::min(piece, static_cast<int>(size - produced));
        produced += static_cast<std::size_t>(
            byInput ? decompressor.DecompressInputBytes(out.data(), piece, room)
                    : decompressor.DecompressOutputBytes(out.data() + produced, room));
    }
    out.resize(produced);
    return out;
}

TEST(KvCompressionTest, TheCapacityHoldsAnyInputAndFitsAnInt)
{
    const int sizes[][2] = {{3000, 4133}, {1610612636, INT_MAX}, {1610612637, 0}, {-1, 0}};
    for (const auto& [size, capacity] : sizes)
        EXPECT_EQ(CKvMemoryCompressor::ComputeCompressionBufferSize(nullptr, size), capacity);
    EXPECT_EQ(CKvMemoryCompressor::Compress(nullptr, 1610612637, nullptr, INT_MAX), 0);

    const std::string source = Random(1000);
    std::string dest(1466, '?');
    EXPECT_EQ(CKvMemoryCompressor::Compress(source.data(), 1000, dest.data(), 1465), 0);
    EXPECT_EQ(dest, std::string(1466, '?'));
    EXPECT_GT(CKvMemoryCompressor::Compress(source.data(), 1000, dest.data(), 1466), 1000);
}

TEST(KvCompressionTest, BlocksAreTheSameOnEveryMachineAndComeBackWholeWhateverThePieces)
{
    const std::string pinned = KvCompressBlock(Text(100000));
    EXPECT_EQ(CreateCrc64(pinned.data(), static_cast<unsigned int>(pinned.size())),
              0xDC355D7E8650910DU);
    for (const std::size_t size : {0U, 1U, 272U, 3000U, 8400U, 70000U, 1100000U}) {
        for (const std::string& bytes : {std::string(size, '\0'), Random(size), Text(size)}) {
            const std::string block = KvCompressBlock(bytes);
            for (const int piece : {1, 4, 7, 8192, INT_MAX})
                for (const bool byInput : {false, true})  // EXPECT_EQ would print a megabyte
                    EXPECT_TRUE(Expand(block, size, piece, byInput) == bytes) << piece;
        }
    }
}

TEST(KvCompressionTest, WhatIsNoBlockGivesNothingAndWhatIsDamagedNoMoreThanItHolds)
{
    const std::string bytes = Text(2000);
    const std::string block = KvCompressBlock(bytes);
    CKvMemoryDecompressor decompressor;
    char out[10];
    for (const std::string& none : {std::string(), block.substr(0, 4), '\xE1' + block.substr(1)}) {
        EXPECT_FALSE(decompressor.Initialize(none.data(), static_cast<int>(none.size())));
        EXPECT_EQ(decompressor.DecompressOutputBytes(out, 10), 0);
        EXPECT_EQ(decompressor.DecompressInputBytes(out, 10, 10), 0);
    }
    EXPECT_TRUE(decompressor.Initialize(block.data(), static_cast<int>(block.size())));
    EXPECT_EQ(decompressor.DecompressInputBytes(out, -1, -1), 0);
    EXPECT_EQ(decompressor.DecompressOutputBytes(out, 10), 10);
    decompressor.Release();
    EXPECT_EQ(decompressor.DecompressOutputBytes(out, 10), 0);

    for (std::size_t size = 5; size < block.size(); ++size) {
        std::string damaged = block;
        damaged[size] ^= 0x10;
        for (const bool byInput : {false, true})
            EXPECT_LE(Expand(damaged, bytes.size(), 7, byInput).size(), bytes.size());
    }
}

TEST(KvCompressionTest, BlocksAreExchangedWithTheXzFamily)
{
    const CKvTemporaryFolder folder;
    const auto xz = [&](const std::string& option, const std::string& input) {
        folder.Write("in", input);
        const CKvProcessResult result =
            KvRunProcess("/usr/bin/xz", {"--format=lzma", option, "--stdout", "in"}, folder.Path());
        EXPECT_EQ(result.status, 0) << result.standardError;
        return result.standardOutput;
    };
    // The classic header: properties and, in eight bytes, the uncompressed size.
    for (const std::size_t size : {1U, 8400U, 200000U}) {
        for (const std::string& bytes : {std::string(size, '\0'), Random(size), Text(size)}) {
            std::string classic = KvCompressBlock(bytes);
            classic.insert(5, KvLittleEndian(size, 8));
            EXPECT_TRUE(xz("--decompress", classic) == bytes) << size;
            const std::string theirs = xz("--compress", bytes);
            const std::string block = theirs.substr(0, 5) + theirs.substr(5 + 8);
            EXPECT_TRUE(Expand(block, size, 1000) == bytes) << size;
        }
    }
}

}  // namespace
