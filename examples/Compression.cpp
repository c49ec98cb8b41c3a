// Compressing memory, expanding it again, and keeping it as a file that any reader of the library
// expands without noticing.
//
// Writes diary.kvc to the current folder and prints Compression.txt.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "file/KvCompressedFile.h"
#include "file/KvFile.h"
#include "file/KvMemoryCompressor.h"
#include "file/KvMemoryDecompressor.h"
#include "file/KvWholeFileWriter.h"

namespace {

/// Gives the compressed block of a text; empty when it could not be made.
std::vector<char> Compress(const std::string& text)
{
    const int size = static_cast<int>(text.size());
    // The capacity that holds any input of this size. The block itself is far smaller.
    const int capacity = CKvMemoryCompressor::ComputeCompressionBufferSize(text.data(), size);
    std::vector<char> block(static_cast<std::size_t>(capacity));
    const int blockSize = CKvMemoryCompressor::Compress(text.data(), size, block.data(), capacity);
    block.resize(static_cast<std::size_t>(blockSize));
    return block;
}

/// Expands a block in pieces, as a program does that needs the data one after the other. A block
/// does not tell how much it holds: ask for no more than went in.
std::string Expand(const std::vector<char>& block, int size)
{
    CKvMemoryDecompressor decompressor;
    if (!decompressor.Initialize(block.data(), static_cast<int>(block.size())))
        return "";
    std::printf("expanded in pieces of 1000:");
    std::string text;
    char piece[1000];
    while (size > 0) {
        const int count = decompressor.DecompressOutputBytes(piece, size < 1000 ? size : 1000);
        if (count == 0)
            break;  // the block is damaged or cut
        std::printf(" %d", count);
        text.append(piece, static_cast<std::size_t>(count));
        size -= count;
    }
    std::printf("\n");
    return text;
}

/// A compressed file is a header in front of a block: the magic, the size of the data as a
/// little-endian number, and bytes that readers ignore.
bool WriteCompressedFile(const char* path, const std::vector<char>& block, std::uint32_t dataSize)
{
    char header[kKvCompressedHeaderSize] = {};
    for (int i = 0; i < kKvCompressedMagicSize; ++i)
        header[i] = kKvCompressedMagic[i];
    for (int i = 0; i < 4; ++i)
        header[kKvCompressedSizeOffset + i] = static_cast<char>(dataSize >> (8 * i));

    // The writer of whole files: the file appears when it is complete, or not at all.
    CKvWholeFileWriter writer;
    if (writer.Open(path, EKvFileSystemOpenMode::WriteBinary) != EKvFileSystemError::Success)
        return false;
    CKvFile file(writer.GetHandle());
    file.Write(header, kKvCompressedHeaderSize);
    file.Write(block.data(), static_cast<int>(block.size()));
    return writer.Commit() == EKvFileSystemError::Success;  // tells of failed writes too
}

/// Reads a file whole, compressed or not: this code does not know and need not.
std::string ReadFile(const char* path)
{
    CKvFile file;
    if (file.Open(path, EKvFileSystemOpenMode::ReadBinary, true) != EKvFileSystemError::Success)
        return "";
    int size = 0;
    const std::unique_ptr<unsigned char[]> bytes(
        static_cast<unsigned char*>(file.ReadEntireFile(size)));
    if (bytes == nullptr)
        return "";  // damaged: half a file is never taken for a whole
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}

}  // namespace

int main()
{
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "The ship left the harbour.\n";

    const std::vector<char> block = Compress(text);
    std::printf("%zu bytes compressed to %zu\n", text.size(), block.size());

    if (Expand(block, static_cast<int>(text.size())) != text)
        return 1;

    if (!WriteCompressedFile("diary.kvc", block, static_cast<std::uint32_t>(text.size())))
        return 1;
    const std::string read = ReadFile("diary.kvc");
    std::printf("diary.kvc: %zu bytes read, %s\n", read.size(),
                read == text ? "the same text" : "another text");
    return read == text ? 0 : 1;
}
