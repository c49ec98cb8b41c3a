// Compressed blocks: what is written, what comes back, and what no block can do to its reader.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>

#include "core/KvCrc64.h"
#include "file/KvLzma.h"
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

/// Expands with at most \a piece bytes of output a call.
std::string ExpandByOutput(const std::string& block, std::size_t size, int piece)
{
    CKvMemoryDecompressor decompressor;
    decompressor.Initialize(block.data(), static_cast<int>(block.size()));
    std::string out(size, '?');
    std::size_t produced = 0;
    for (int step = 1; step > 0 && produced < size; produced += static_cast<std::size_t>(step))
        step = decompressor.DecompressOutputBytes(
            out.data() + produced, std::min(piece, static_cast<int>(size - produced)));
    out.resize(produced);
    return out;
}

/// Expands with at most \a piece bytes of input and of output a call.
std::string ExpandByInput(const std::string& block, std::size_t size, int piece)
{
    CKvMemoryDecompressor decompressor;
    decompressor.Initialize(block.data(), static_cast<int>(block.size()));
    std::string out(size, '?');
    std::size_t produced = 0;
    const std::size_t mostCalls = block.size() + size + 1;
    for (std::size_t call = 0; call < mostCalls && produced < size; ++call)
        produced += static_cast<std::size_t>(decompressor.DecompressInputBytes(
            out.data(), piece, std::min(piece, static_cast<int>(size - produced))));
    out.resize(produced);
    return out;
}

TEST(KvCompressionTest, TheCapacityHoldsAnyInputAndFitsAnInt)
{
    const int sizes[][2] = {{0, 133},        {3000, 4133}, {1610612636, INT_MAX},
                            {1610612637, 0}, {INT_MAX, 0}, {-1, 0}};
    for (const auto& [size, capacity] : sizes) {
        EXPECT_EQ(CKvMemoryCompressor::ComputeCompressionBufferSize(nullptr, size), capacity);
        if (capacity == 0) {
            EXPECT_EQ(CKvMemoryCompressor::Compress(nullptr, size, nullptr, INT_MAX), 0);
        }
    }

    const std::string source = Random(1000);
    std::string dest(1466, '?');
    EXPECT_EQ(CKvMemoryCompressor::Compress(source.data(), 1000, dest.data(), 1465), 0);
    EXPECT_EQ(dest, std::string(1466, '?'));
    EXPECT_GT(CKvMemoryCompressor::Compress(source.data(), 1000, dest.data(), 1466), 1000);
    EXPECT_EQ(dest.substr(0, 5), std::string("\x5D\0\0\x10\0", 5));

    unsigned char room[100];
    EXPECT_EQ(KvLzmaCompress({reinterpret_cast<const unsigned char*>(source.data()), 1000}, room),
              0U);
}

TEST(KvCompressionTest, OneInputGivesOneBlockOnEveryMachine)
{
    const std::string block = KvCompressBlock(Text(100000));
    EXPECT_EQ(block.size(), 7890U);
    EXPECT_EQ(CreateCrc64(block.data(), static_cast<unsigned int>(block.size())),
              0xDC355D7E8650910DU);
}

TEST(KvCompressionTest, BlocksComeBackWholeWhateverThePieces)
{
    int blocks = 0;
    for (const std::size_t size : {0, 1, 272, 3000, 8400, 70000, 1100000}) {
        for (const std::string& bytes : {std::string(size, '\0'), Random(size), Text(size)}) {
            const std::string block = KvCompressBlock(bytes);
            for (const int piece : {1, 4, 7, 8192, INT_MAX}) {
                // Not compared by the framework, which would print a megabyte.
                EXPECT_TRUE(ExpandByOutput(block, size, piece) == bytes) << size << ' ' << piece;
                EXPECT_TRUE(ExpandByInput(block, size, piece) == bytes) << size << ' ' << piece;
            }
            ++blocks;
        }
    }
    EXPECT_EQ(blocks, 21);
    const std::string large(6000000, 'l');
    EXPECT_TRUE(ExpandByInput(KvCompressBlock(large), large.size(), 4000) == large);
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
    EXPECT_EQ(decompressor.DecompressOutputBytes(out, 0), 0);
    EXPECT_EQ(decompressor.DecompressInputBytes(out, -1, -1), 0);
    EXPECT_EQ(decompressor.DecompressOutputBytes(out, 10), 10);
    EXPECT_EQ(std::string(out, 10), bytes.substr(0, 10));
    decompressor.Release();
    EXPECT_EQ(decompressor.DecompressOutputBytes(out, 10), 0);

    for (std::size_t size = 5; size < block.size(); ++size) {
        const std::string cut = ExpandByOutput(block.substr(0, size), bytes.size(), 7);
        EXPECT_EQ(cut, bytes.substr(0, cut.size())) << size;
        std::string damaged = block;
        damaged[size] ^= 0x10;
        EXPECT_LE(ExpandByOutput(damaged, bytes.size(), 7).size(), bytes.size());
        EXPECT_LE(ExpandByInput(damaged, bytes.size(), 7).size(), bytes.size());
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
    const std::size_t classicHeaderSize = 5 + 8;  // properties and the uncompressed size
    for (const std::size_t size : {1, 8400, 200000}) {
        for (const std::string& bytes : {std::string(size, '\0'), Random(size), Text(size)}) {
            std::string classic = KvCompressBlock(bytes);
            classic.insert(5, KvLittleEndian(size, 8));
            EXPECT_TRUE(xz("--decompress", classic) == bytes) << size;
            const std::string theirs = xz("--compress", bytes);
            EXPECT_TRUE(ExpandByOutput(theirs.substr(0, 5) + theirs.substr(classicHeaderSize), size,
                                       1000) == bytes)
                << size;
        }
    }
}

}  // namespace
