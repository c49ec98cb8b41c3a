// Identifier hash files, against a reader of a few lines.

#include <map>

#include "core/KvIdentifierManager.h"
#include "fuzz/KvFuzz.h"
#include "tests/support/KvMemoryDisk.h"

namespace {

using Names = std::map<std::uint64_t, std::string>;

std::uint64_t ReadNumber(std::string_view bytes, bool bigEndian)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        value =
            value << 8 | static_cast<unsigned char>(bytes[bigEndian ? i : bytes.size() - 1 - i]);
    return value;
}

/// The first name of each CRC, up to the first entry that is none.
Names ReadNames(std::string_view file, bool bigEndian)
{
    Names names;
    CKvFuzzInput input(reinterpret_cast<const std::uint8_t*>(file.data()), file.size());
    const std::string_view count = input.Take(4);
    for (auto left = count.size() == 4 ? ReadNumber(count, bigEndian) : 0; left > 0; --left) {
        const std::string_view length = input.Take(4);
        const std::size_t size = ReadNumber(length, bigEndian);
        if (length.size() < 4 || size > CKvIdentifierManager::kLongestFileName)
            break;
        const std::string name(input.Take(size));
        const std::string_view crc = input.Take(8);
        if (crc.size() < 8)
            break;
        names.emplace(ReadNumber(crc, bigEndian), name.c_str());
    }
    return names;
}

Names ListRegistered()
{
    CKvArray<const CKvIdentifierHashEntry*> entries;
    CKvIdentifierManager::GetInstance().ListInSlotOrder(entries);
    Names names;
    for (const CKvIdentifierHashEntry* entry : entries)
        KvRequire(names.emplace(entry->crc, entry->name.GetText()).second, "a CRC has one entry");
    return names;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CKvFuzzInput input(data, size);
    const bool bigEndian = input.TakeByte() % 2 != 0;
    const std::string file = input.TakeRest();
    CKvMemoryDisk disk;
    disk.Write("names", file);
    CKvIdentifierManager& manager = CKvIdentifierManager::GetInstance();
    manager.Release();
    manager.LoadHashFile("names", bigEndian);
    const Names names = ListRegistered();
    KvRequire(names == ReadNames(file, bigEndian), "the names of a file are registered");

    for (const bool swapped : {false, true}) {
        manager.SaveHashFile("names", swapped);
        KvRequire(ReadNames(disk.Read("names"), swapped) == names, "all names are saved");
    }
    KvRequire(disk.GetOpenCount() == 0 && disk.Names().size() == 1, "no stream or file is left");
    return 0;
}
