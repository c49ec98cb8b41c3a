// KvBenchFiles: compares reading plain and compressed files with the least that the C library and
// the LZMA SDK ask for, and prints the figures.

#include <lzma/LzmaDec.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "bench/KvBenchReport.h"
#include "bench/KvBenchStatistics.h"
#include "bench/KvMeasureInTurn.h"
#include "bench/KvProcessMeter.h"
#include "bench/KvTemporaryFolder.h"
#include "file/KvCompressedFile.h"
#include "file/KvFile.h"
#include "file/KvMemoryCompressor.h"

namespace {

constexpr int kRounds = 9;
constexpr std::size_t kPlainBytes = std::size_t{256} << 20;
constexpr std::size_t kPieceBytes = 64 << 10;
constexpr std::size_t kCompressedDataBytes = 16 << 20;

/// Hidden: with one of these the program is a child process; paths follow.
constexpr std::string_view kReadOption = "--read";
constexpr std::string_view kHoldOption = "--hold";

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "bench: cannot %s\n", what);
    std::exit(1);
}

using Bytes = std::unique_ptr<unsigned char[]>;

/// Whatever was computed must count for something, or the compiler leaves it out.
std::size_t g_checksum = 0;

void Count(const unsigned char* bytes, std::size_t size)
{
    g_checksum += bytes[0] + std::size_t{bytes[size - 1]};
}

void OpenOrFail(CKvFile& file, const std::string& path)
{
    if (file.Open(path.c_str(), EKvFileSystemOpenMode::ReadBinary, false) !=
        EKvFileSystemError::Success)
        Fail("open a file");
}

Bytes ReadEntireFile(const std::string& path, std::size_t expectedSize)
{
    CKvFile file;
    OpenOrFail(file, path);
    int size = 0;
    Bytes bytes(static_cast<unsigned char*>(file.ReadEntireFile(size)));
    if (bytes == nullptr || static_cast<std::size_t>(size) != expectedSize)
        Fail("read a file whole");
    return bytes;
}

// --- Inputs

void WritePlain(const std::string& path)
{
    std::ofstream file(path, std::ios::binary);
    CKvBenchRandom random(1);
    std::vector<std::uint64_t> piece(kPieceBytes / sizeof(std::uint64_t));
    for (std::size_t written = 0; written < kPlainBytes; written += kPieceBytes) {
        std::generate(piece.begin(), piece.end(), [&] { return random.Next(); });
        file.write(reinterpret_cast<const char*>(piece.data()), kPieceBytes);
    }
    if (!file.flush())
        Fail("write the plain file");
}

/// A text like a level's: tags, names that differ, numbers.
std::string MakeText(std::size_t size)
{
    CKvBenchRandom random(2);
    std::string text;
    while (text.size() < size) {
        text += "<entity name=\"object_";
        text += std::to_string(random.Below(50000));
        text += "\"><position x=\"";
        text += std::to_string(random.Below(100000));
        text += "\"/></entity>\n";
    }
    text.resize(size);
    return text;
}

bool WriteCompressed(const std::string& path, const std::string& text)
{
    const int size = static_cast<int>(text.size());
    const int capacity = CKvMemoryCompressor::ComputeCompressionBufferSize(text.data(), size);
    std::vector<char> block(static_cast<std::size_t>(capacity));
    const int blockSize = CKvMemoryCompressor::Compress(text.data(), size, block.data(), capacity);
    char header[kKvCompressedHeaderSize] = {};
    std::copy_n(kKvCompressedMagic, kKvCompressedMagicSize, header);
    for (int i = 0; i < 4; ++i)
        header[kKvCompressedSizeOffset + i] = static_cast<char>(size >> (8 * i));
    std::ofstream file(path, std::ios::binary);
    file.write(header, kKvCompressedHeaderSize).write(block.data(), blockSize);
    return blockSize > 0 && file.flush();
}

struct CInputs
{
    explicit CInputs(const std::string& folder)
        : plain(folder + "/plain"), compressed(folder + "/compressed"), tiny(folder + "/tiny")
    {
    }

    /// Makes all of them.
    void Write() const
    {
        WritePlain(plain);
        if (!WriteCompressed(compressed, MakeText(kCompressedDataBytes)) ||
            !WriteCompressed(tiny, "tiny"))
            Fail("write a compressed file");
    }

    std::string plain;
    std::string compressed;
    std::string tiny;
};

// --- Plain files

double CompareReadingInPieces(const CInputs& inputs)
{
    std::vector<unsigned char> piece(kPieceBytes);
    const auto ours = [&] {
        CKvFile file;
        OpenOrFail(file, inputs.plain);
        while (file.Read(piece.data(), kPieceBytes) == int{kPieceBytes})
            Count(piece.data(), kPieceBytes);
    };
    const auto yardstick = [&] {
        std::FILE* file = std::fopen(inputs.plain.c_str(), "rb");
        while (std::fread(piece.data(), 1, kPieceBytes, file) == kPieceBytes)
            Count(piece.data(), kPieceBytes);
        std::fclose(file);
    };
    return KvMeasureInTurn(kRounds, ours, yardstick).Ratio();
}

double CompareReadingWhole(const CInputs& inputs)
{
    const auto ours = [&] { Count(ReadEntireFile(inputs.plain, kPlainBytes).get(), kPlainBytes); };
    const auto yardstick = [&] {
        const Bytes bytes(new unsigned char[kPlainBytes]);
        std::FILE* file = std::fopen(inputs.plain.c_str(), "rb");
        if (std::fread(bytes.get(), 1, kPlainBytes, file) != kPlainBytes)
            Fail("read the plain file");
        std::fclose(file);
        Count(bytes.get(), kPlainBytes);
    };
    return KvMeasureInTurn(kRounds, ours, yardstick).Ratio();
}

// --- Compressed files

double CompareExpanding(const CInputs& inputs)
{
    std::ifstream file(inputs.compressed, std::ios::binary);
    const std::vector<char> image{std::istreambuf_iterator<char>(file), {}};
    const auto* block =
        reinterpret_cast<const unsigned char*>(image.data()) + kKvCompressedHeaderSize;
    const auto ours = [&] {
        Count(ReadEntireFile(inputs.compressed, kCompressedDataBytes).get(), kCompressedDataBytes);
    };
    const auto yardstick = [&] {
        ISzAlloc memory = {[](void*, std::size_t size) { return std::malloc(size); },
                           [](void*, void* address) { std::free(address); }};
        const Bytes bytes(new unsigned char[kCompressedDataBytes]);
        std::size_t size = kCompressedDataBytes;
        std::size_t streamSize = image.size() - kKvCompressedHeaderSize - LZMA_PROPS_SIZE;
        ELzmaStatus status = LZMA_STATUS_NOT_SPECIFIED;
        if (LzmaDecode(bytes.get(), &size, block + LZMA_PROPS_SIZE, &streamSize, block,
                       LZMA_PROPS_SIZE, LZMA_FINISH_ANY, &status, &memory) != SZ_OK)
            Fail("decode the block");
        Count(bytes.get(), size);
    };
    return KvMeasureInTurn(kRounds, ours, yardstick).Ratio();
}

/// Writes to all pages of memory of the size of the output and of the decoder's state.
void HoldOutputAndDecoder()
{
    const std::size_t dictionaryBytes = 1 << 20;
    const std::size_t modelBytes = (1846 + (768 << 3)) * sizeof(std::uint16_t);
    const std::size_t size = kCompressedDataBytes + dictionaryBytes + modelBytes;
    const Bytes bytes(new unsigned char[size]);
    volatile unsigned char* pages = bytes.get();
    for (std::size_t i = 0; i < size; i += 4096)
        pages[i] = 1;
}

/// What reading the compressed file takes beyond output and decoder, in KiB: the memory of a child
/// that reads it over that of one that holds as much. Both first read a tiny compressed file, so
/// that the code is in memory.
double MeasureExtraMemory(const std::string& folder)
{
    const auto touchedBytes = [&](std::string_view option) {
        CKvProcessCost cost;
        if (!KvMeasureProcess({{KvOwnProgramPath(), std::string(option), folder}}, cost))
            Fail("measure a child");
        return cost.touchedBytes;
    };
    std::vector<double> differences(kRounds);
    for (double& difference : differences)
        difference = touchedBytes(kReadOption) - touchedBytes(kHoldOption);
    return KvMedian(differences) / 1024;
}

int RunChild(std::string_view option, const std::string& folder)
{
    const CInputs inputs(folder);
    Count(ReadEntireFile(inputs.tiny, 4).get(), 4);
    if (option == kReadOption)
        Count(ReadEntireFile(inputs.compressed, kCompressedDataBytes).get(), kCompressedDataBytes);
    else
        HoldOutputAndDecoder();
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::span<char* const> words(argv + 1, static_cast<std::size_t>(argc) - 1);
    if (words.size() == 2)
        return RunChild(words[0], words[1]);

    const CKvTemporaryFolder folder;
    if (folder.Path().empty())
        Fail("make a temporary folder");
    const CInputs inputs(folder.Path());
    inputs.Write();
    KvPrintFigures({
        {"plain file, Read() in 64 KiB pieces / fread", CompareReadingInPieces(inputs), 1.1},
        {"plain file, ReadEntireFile() / one fread", CompareReadingWhole(inputs), {}},
        {"compressed file, ReadEntireFile() / SDK from memory", CompareExpanding(inputs), 1.15},
        {"the same, memory beyond output and decoder, KiB", MeasureExtraMemory(folder.Path()),
         64.0},
    });
    return 0;
}
