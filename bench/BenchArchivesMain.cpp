// KvBenchArchives: compares reading members and opening archives with the least that the system and
// the format ask for, and prints the figures.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "bench/KvBenchReport.h"
#include "bench/KvBenchStatistics.h"
#include "bench/KvMeasureInTurn.h"
#include "bench/KvTemporaryFolder.h"
#include "core/KvCrc64.h"
#include "file/KvBigFile.h"
#include "file/KvBigFileGenerator.h"
#include "file/KvFileHandleBigFile.h"
#include "file/KvFileSystemUnCached.h"

namespace {

constexpr int kRounds = 9;

/// What twice the look-ups among twice the members may cost: 2 is linear, 4 quadratic, and memory
/// outgrows the caches.
constexpr double kSearchGrowthGoal = 3.0;

constexpr int kSearchPasses = 5;
constexpr int kMembers = 64;
constexpr int kMemberBytes = 1 << 20;

/// Makes the compiler keep what was computed, and the measurements honest.
std::uint64_t g_checksum = 0;

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "bench: cannot %s\n", what);
    std::exit(1);
}

std::uint64_t CrcOf(const std::string& name)
{
    return CreateCrc64_ToLower(name.data(), static_cast<unsigned int>(name.size()),
                               kKvCrc64Initial);
}

std::string MemberName(int number)
{
    return "data/levels/harbour/object_" + std::to_string(number) + ".mesh";
}

/// An archive of \a count members that all have the content of \a source.
void MakeArchive(const std::string& path, const std::string& source, int count, bool headerOnly)
{
    CKvBigFileGenerator generator;
    for (int i = 0; i < count; ++i) {
        const std::string name = MemberName(i);
        if (!generator.AddFile(source.c_str(), name.c_str(), CrcOf(name)))
            Fail("add a member");
    }
    if (!generator.Save(path.c_str(), false, headerOnly))
        Fail("save an archive");
}

// --- Reading members

struct CRange
{
    int member;
    int position;
};

/// Ranges of \a size bytes of random members: scattered, or each member from its start to its end.
std::vector<CRange> MakeRanges(int size, int count, bool sequential)
{
    CKvBenchRandom random(1);
    std::vector<CRange> ranges;
    const int piecesAMember = kMemberBytes / size;
    for (int i = 0; i < count; ++i) {
        const auto piece = sequential ? static_cast<std::uint64_t>(i)
                                      : random.Below(static_cast<std::uint64_t>(kMembers) *
                                                     static_cast<std::uint64_t>(piecesAMember));
        ranges.push_back({static_cast<int>(piece) / piecesAMember % kMembers,
                          static_cast<int>(piece) % piecesAMember * size});
    }
    return ranges;
}

CKvBenchFigure CompareReads(const std::string& path, const std::string& what, int size,
                            bool sequential)
{
    CKvBigFile archive;
    if (archive.Open(path.c_str(), EKvFileSystemOpenMode::ReadBinary) !=
        EKvFileSystemError::Success)
        Fail("open an archive");
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const auto dataStart =
        static_cast<off_t>(std::filesystem::file_size(path)) - off_t{kMembers} * kMemberBytes;
    std::vector<CKvFileHandle*> handles(kMembers);
    for (std::size_t i = 0; i < handles.size(); ++i)
        handles[i] = archive.FileOpenByIndex(static_cast<int>(i));

    const std::vector<CRange> ranges =
        MakeRanges(size, std::min(100'000'000 / size, 100'000), sequential);
    std::vector<unsigned char> buffer(static_cast<std::size_t>(size));
    const CKvTurnCosts costs = KvMeasureInTurn(
        kRounds,
        [&] {
            for (const CRange& range : ranges) {
                CKvFileHandle* handle = handles[static_cast<std::size_t>(range.member)];
                CKvFileSystemUnCached::SeekFromStart(handle, range.position);
                if (CKvFileSystemUnCached::Read(handle, buffer.data(), size) != size)
                    Fail("read a member");
                g_checksum += buffer[0];
            }
        },
        [&] {
            for (const CRange& range : ranges) {
                const off_t offset =
                    dataStart + off_t{range.member} * kMemberBytes + range.position;
                if (pread(file, buffer.data(), buffer.size(), offset) != size)
                    Fail("read the archive");
                g_checksum -= buffer[0];
            }
        });
    close(file);
    for (CKvFileHandle* handle : handles)
        archive.FileClose(handle);
    if (g_checksum != 0)
        Fail("read the same bytes both ways");
    return {"member reads / pread, " + what, costs.Ratio(), 1.2};
}

// --- Opening and searching

void OpenArchive(const std::string& path, int members)
{
    CKvBigFile archive;
    if (archive.Open(path.c_str(), EKvFileSystemOpenMode::ReadBinary) !=
            EKvFileSystemError::Success ||
        archive.GetNumFiles() != members)
        Fail("open an archive");
}

/// Reads the table into one block and hashes each of its names.
void ReadTableAndHash(const std::string& path)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    std::vector<unsigned char> table(std::filesystem::file_size(path));
    if (file == nullptr || std::fread(table.data(), 1, table.size(), file) != table.size())
        Fail("read a table");
    std::fclose(file);
    for (std::size_t i = 8; i < table.size(); i += 8) {
        i += 8;
        const auto length =
            static_cast<unsigned int>(std::strlen(reinterpret_cast<const char*>(&table[i])));
        g_checksum += CreateCrc64_ToLower(&table[i], length, kKvCrc64Initial);
        i += length + 1;
    }
}

/// CPU seconds for one look-up of every member.
double SearchAll(const std::string& path, int members)
{
    CKvBigFile archive;
    if (archive.Open(path.c_str(), EKvFileSystemOpenMode::ReadBinary) !=
        EKvFileSystemError::Success)
        Fail("open an archive");
    std::vector<TKvString<char>> names(static_cast<std::size_t>(members));
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = MemberName(static_cast<int>(i)).c_str();
    const double seconds = KvCpuSeconds([&] {
        for (int pass = 0; pass < kSearchPasses; ++pass) {
            for (const TKvString<char>& name : names) {
                CKvFileHandle* handle = archive.FileOpen(name);
                if (!archive.FileClose(handle))
                    Fail("find a member");
            }
        }
    });
    return seconds / kSearchPasses;
}

std::vector<CKvBenchFigure> CompareTables(const std::string& half, int halfMembers,
                                          const std::string& whole, int wholeMembers)
{
    const CKvTurnCosts open = KvMeasureInTurn(
        kRounds, [&] { OpenArchive(whole, wholeMembers); }, [&] { ReadTableAndHash(whole); });
    const CKvTurnCosts openGrowth = KvMeasureInTurn(
        kRounds, [&] { OpenArchive(whole, wholeMembers); },
        [&] { OpenArchive(half, halfMembers); });
    std::vector<double> wholeSearch, halfSearch;
    for (int round = 0; round < kRounds; ++round) {
        wholeSearch.push_back(SearchAll(whole, wholeMembers));
        halfSearch.push_back(SearchAll(half, halfMembers));
    }
    const double search = KvMedian(wholeSearch);
    std::printf("opening 100,000 members: %.1f ms; 100,000 look-ups: %.1f ms\n\n", open.ours * 1e3,
                search * 1e3);
    return {
        {"opening 100,000 members / reading and hashing", open.Ratio(), 3.0},
        {"opening 100,000 members / opening 50,000", openGrowth.Ratio(), 2.3},
        {"100,000 look-ups / 50,000 look-ups", search / KvMedian(halfSearch), kSearchGrowthGoal}};
}

}  // namespace

int main()
{
    const CKvTemporaryFolder folder;
    if (folder.Path().empty())
        Fail("make a temporary folder");
    const std::string source = folder.Path() + "/source";
    const std::string data = folder.Path() + "/data";
    const std::string half = folder.Path() + "/half";
    const std::string whole = folder.Path() + "/whole";

    std::string content(kMemberBytes, '\0');
    CKvBenchRandom random(2);
    for (char& byte : content)
        byte = static_cast<char>(random.Next());
    std::ofstream(source, std::ios::binary) << content;
    MakeArchive(data, source, kMembers, false);
    std::ofstream(source, std::ios::binary | std::ios::trunc).flush();
    MakeArchive(half, source, 50'000, true);
    MakeArchive(whole, source, 100'000, true);

    std::vector<CKvBenchFigure> figures = CompareTables(half, 50'000, whole, 100'000);
    g_checksum = 0;
    figures.push_back(CompareReads(data, "scattered, 100 bytes", 100, false));
    figures.push_back(CompareReads(data, "scattered, 4 KiB", 4 << 10, false));
    figures.push_back(CompareReads(data, "scattered, 64 KiB", 64 << 10, false));
    figures.push_back(CompareReads(data, "in order, 100 bytes", 100, true));
    figures.push_back(CompareReads(data, "in order, 64 KiB", 64 << 10, true));
    KvPrintFigures(figures);
    return 0;
}
