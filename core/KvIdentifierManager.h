// The process-wide register of identifier texts: which text first produced each CRC. It serves
// diagnostics and the writers of documents; comparing identifiers never asks it.

#pragma once

#include <cstdint>
#include <memory>

#include "core/KvArray.h"
#include "core/KvString.h"

/// One registered name. Fields stand in the documented order.
class CKvIdentifierHashEntry
{
public:
    CKvIdentifierHashEntry() = default;
    CKvIdentifierHashEntry(const char* text, std::uint64_t entryCrc) : crc(entryCrc), name(text) {}
    CKvIdentifierHashEntry(const TKvString<char>& text, std::uint64_t entryCrc)
        : crc(entryCrc), name(text)
    {
    }

    std::uint64_t crc = 0;
    TKvString<char> name;
};

/// How the register's table, as hash files lay it out, treats its entries.
class CKvIdentifierHashPolicy
{
public:
    using Key = std::uint64_t;

    static const Key& GetKey(const CKvIdentifierHashEntry& entry) { return entry.crc; }
    static bool MatchKey(const CKvIdentifierHashEntry& entry, Key key) { return entry.crc == key; }

    /// The low 32 bits of the key.
    static int CreateHash(Key key) { return static_cast<int>(static_cast<std::uint32_t>(key)); }
};

/// The register. Texts are kept in lower case; the first text of a CRC stays, whatever comes later.
///
/// Ownership: the texts that it hands out are its own and valid until Release().
class CKvIdentifierManager
{
public:
    /// The one instance, made on the first call and never destroyed.
    static CKvIdentifierManager& GetInstance();

    CKvIdentifierManager(const CKvIdentifierManager&) = delete;
    CKvIdentifierManager& operator=(const CKvIdentifierManager&) = delete;
    virtual ~CKvIdentifierManager();

    /// Does nothing: the table is made when it is first needed.
    void Initialize() {}

    /// Destroys all entries, those of the vocabulary too, which is not registered again. Text
    /// pointers of identifiers made before dangle from here on: for the end of a program.
    void Release();

    /// The text registered for \a crc, "" for an entry without text; null when there is no entry.
    const char* FindNameForCrc64(std::uint64_t crc);

    /// Registers a text under its CRC unless that CRC has an entry. The flag is not used.
    void CheckCrc64ForUniqueness(const char* text, bool flag);

    /// Registers \a length bytes of text under \a crc, their CRC with case folded, unless that CRC
    /// has an entry. Gives the text that is registered afterwards.
    const char* Register(std::uint64_t crc, const char* text, unsigned int length);

    /// Adds an entry as it stands, its text not checked against its CRC.
    ///
    /// Errors: false when the CRC has an entry already; that one stays.
    bool Insert(const CKvIdentifierHashEntry& entry);

    /// Appends pointers to all entries, in the slot order of the documented table: linear probing
    /// from the CRC's low bits, doubled whenever a quarter full.
    void ListInSlotOrder(CKvArray<const CKvIdentifierHashEntry*>& entries);

    // --- The hash file. These two are defined in file/, so that core/ knows no files.

    /// Adds the names of a hash file to those registered; a CRC that has an entry keeps it. Numbers
    /// are little-endian, or big-endian when \a swapEndian is set.
    ///
    /// Errors: a file that cannot be opened changes nothing. Reading stops at the first entry that
    ///         is cut short or whose name exceeds 511 bytes; entries before it stay.
    void LoadHashFile(const TKvString<char>& path, bool swapEndian);

    /// Writes all names as a hash file. Names above 511 bytes, which no reader takes, are left out.
    ///
    /// Errors: on any failure the file is as it was before; nothing is reported.
    void SaveHashFile(const TKvString<char>& path, bool swapEndian);

    /// The longest name that a hash file holds, in bytes.
    static constexpr unsigned int kLongestFileName = 511;

private:
    class CTable;

    CKvIdentifierManager();
    CTable& Table();

    std::unique_ptr<CTable> m_table;
};
