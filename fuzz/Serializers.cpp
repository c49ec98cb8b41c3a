// Values read back from any bytes: by the loader, whose values the saver must turn into the same
// bytes, and by the reader of images.

#include <vector>

#include "fuzz/KvFuzz.h"
#include "serial/KvMemFileReader.h"
#include "serial/KvSerialLoader.h"
#include "serial/KvSerialSaver.h"
#include "serial/KvSerialSizer.h"

namespace {

using Bytes = std::vector<unsigned char>;

constexpr unsigned int kKindCount = 6;

/// One value of any kind.
struct CValue
{
    unsigned int kind = 0;
    TKvString<char> text = "kept";
    float real = 0;
    unsigned int natural = 0;
    int whole = 0;
    unsigned char byte = 0;
    char letter = 0;

    bool Serialize(IKvSerializer& serializer)
    {
        switch (kind) {
            case 0:
                return serializer.Serialize(text) != 0;
            case 1:
                return serializer.Serialize(real) != 0;
            case 2:
                return serializer.Serialize(natural) != 0;
            case 3:
                return serializer.Serialize(whole) != 0;
            case 4:
                return serializer.Serialize(byte) != 0;
            default:
                return serializer.Serialize(letter) != 0;
        }
    }
};

/// Gives the values up to the first that does not fit, and the bytes that they came from.
std::vector<CValue> Load(const std::string& kinds, Bytes& bytes)
{
    std::vector<CValue> values;
    CKvSerialLoader loader(bytes.data(), bytes.size());
    bool failed = false;
    for (const char kind : kinds) {
        CValue value = {static_cast<unsigned char>(kind) % kKindCount};
        const bool loaded = value.Serialize(loader);
        KvRequire(!(loaded && failed), "after a failure every call fails");
        KvRequire(loaded || value.text == "kept", "what fails leaves its target alone");
        failed = !loaded;
        if (loaded)
            values.push_back(value);
        KvRequire(loader.hasOverflowed() == failed, "a failure is remembered");
    }
    KvRequire(loader.getFlow() >= 0 && loader.getFlow() <= static_cast<long>(bytes.size()),
              "a loader stays in its buffer");
    bytes.resize(bytes.size() - static_cast<std::size_t>(loader.getFlow()));
    return values;
}

void RequireSavedAlike(std::vector<CValue>& values, const Bytes& loadedFrom)
{
    CKvSerialSizer sizer;
    for (CValue& value : values)
        KvRequire(value.Serialize(sizer), "a sizer never fails");
    Bytes saved(sizer.GetLength());
    CKvSerialSaver saver(saved.data(), saved.size());
    for (CValue& value : values)
        KvRequire(value.Serialize(saver), "what was sized fits");
    KvRequire(saver.getFlow() == 0, "what was sized fills its buffer");
    // A text ends at a zero byte, so what was behind it is not there any more.
    KvRequire(saved.size() < loadedFrom.size() || saved == loadedFrom,
              "what was loaded is saved as the same bytes");
}

template <class T>
void RequireRead(CKvMemFileReader& reader, bool (CKvMemFileReader::*read)(T&))
{
    const int before = reader.GetRemaining();
    const bool fits = !reader.HasFailed() && before >= static_cast<int>(sizeof(T));
    T value = T(1);
    KvRequire((reader.*read)(value) == fits && (fits || value == T()),
              "a value is read when it fits, and else zero");
    KvRequire(reader.GetRemaining() == before - (fits ? static_cast<int>(sizeof(T)) : 0),
              "a reader moves by what it read");
}

/// \a size may be negative.
void RequireBlock(CKvMemFileReader& reader, int size)
{
    const int before = reader.GetRemaining();
    const bool fits = !reader.HasFailed() && size >= 0 && size <= before;
    Bytes out(static_cast<std::size_t>(std::max(size, 0)), 0xEE);
    KvRequire(reader.Read(out.data(), size) == fits, "a block is read when it fits");
    KvRequire(fits || std::count(out.begin(), out.end(), 0) == std::max(size, 0),
              "a block that is refused is zero");
    KvRequire(reader.GetRemaining() == before - (fits ? size : 0),
              "a reader moves by what it read");
}

void ReadImage(const std::string& kinds, const std::string& image)
{
    const Bytes bytes(image.begin(), image.end());
    CKvMemFileReader reader(bytes.data(), static_cast<int>(bytes.size()));
    for (const char kind : kinds) {
        const auto at = bytes.size() - static_cast<std::size_t>(reader.GetRemaining());
        TKvString<char> text = "stale";
        switch (static_cast<unsigned char>(kind) % kKindCount) {
            case 0: {
                const bool fits = !reader.HasFailed() && image.find('\0', at) != std::string::npos;
                KvRequire(reader.ReadString(text) == fits, "a text needs its terminator");
                KvRequire(text == (fits ? image.c_str() + at : ""), "a text is its bytes");
                break;
            }
            case 1:
                RequireRead(reader, &CKvMemFileReader::ReadU16);
                break;
            case 2:
                RequireRead(reader, &CKvMemFileReader::ReadU32);
                break;
            case 3:
                RequireRead(reader, &CKvMemFileReader::ReadS64);
                break;
            case 4:
                RequireRead(reader, &CKvMemFileReader::ReadS8);
                break;
            default:
                RequireBlock(reader, static_cast<signed char>(kind));
        }
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CKvFuzzInput input(data, size);
    const std::string kinds(input.Take(input.TakeByte()));
    const std::string rest = input.TakeRest();
    Bytes bytes(rest.begin(), rest.end());
    std::vector<CValue> values = Load(kinds, bytes);
    RequireSavedAlike(values, bytes);
    ReadImage(kinds, rest);
    return 0;
}
