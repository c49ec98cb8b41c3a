#include "core/KvLog.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "platform/KvPlatformFolders.h"

namespace {

constexpr std::size_t kLineCapacity = 8192;
constexpr std::size_t kPathCapacity = 256;

/// The longest name whose six paths all fit: "_logs\NAME_profile.log" and its terminator.
constexpr std::size_t kMaxNameLength = kPathCapacity - sizeof "_logs\\_profile.log";

struct CLevelRow
{
    ELogLevel level;
    const char* tag;
    const char* fileSuffix;
};

constexpr std::array<CLevelRow, 5> kLevels = {{{ELogLevel::Info, "[   INFO] ", "info"},
                                               {ELogLevel::Profile, "[PROFILE] ", "profile"},
                                               {ELogLevel::Warning, "[WARNING] ", "warning"},
                                               {ELogLevel::Error, "[  ERROR] ", "error"},
                                               {ELogLevel::Fatal, "[  FATAL] ", "fatal"}}};

CKvLogMasks s_masks;
std::FILE* s_mainFile = nullptr;
std::array<std::FILE*, kLevels.size()> s_levelFiles = {};  // in the order of kLevels

template <typename Bits>
constexpr bool HasAny(unsigned int mask, Bits bits)
{
    return (mask & static_cast<unsigned int>(bits)) != 0;
}

/// One line under construction: appends until only the line feed and the terminator still fit.
class CLogLine
{
public:
    /// Two blanks a unit, none for a negative count.
    void AppendIndent(int units)
    {
        const auto blanks = 2 * static_cast<std::uint64_t>(std::max(units, 0));
        const auto taken = static_cast<std::size_t>(std::min<std::uint64_t>(blanks, Room()));
        std::memset(&m_text[m_length], ' ', taken);
        m_length += taken;
    }

#ifdef __GNUC__
    [[gnu::format(printf, 2, 3)]]
#endif
    void
    AppendFormat(const char* format, ...)
    {
        std::va_list arguments;
        va_start(arguments, format);
        AppendFormatList(format, arguments);
        va_end(arguments);
    }

    void AppendFormatList(const char* format, std::va_list arguments)
    {
        // One byte more than there is room for: the terminator stands where the line feed will.
        const int length = std::vsnprintf(&m_text[m_length], Room() + 1, format, arguments);
        if (length > 0)  // negative when a wide text has no narrow form
            m_length += std::min(static_cast<std::size_t>(length), Room());
    }

    void End()
    {
        m_text[m_length++] = '\n';
        m_text[m_length] = '\0';
    }

    const char* GetText() const
    {
        return m_text.data();
    }
    std::size_t GetLength() const
    {
        return m_length;
    }

private:
    std::size_t Room() const
    {
        return kLineCapacity - 2 - m_length;
    }

    std::array<char, kLineCapacity> m_text;
    std::size_t m_length = 0;
};

/// Creates "_logs\NAME.log", or "_logs\NAME_SUFFIX.log" when there is a suffix. Null on failure.
/// The name is no longer than kMaxNameLength.
std::FILE* OpenLogFile(const char* name, const char* separator, const char* suffix)
{
    std::array<char, kPathCapacity> path;
    std::snprintf(path.data(), path.size(), "_logs\\%s%s%s.log", name, separator, suffix);
    std::FILE* file = KvPlatformDisk().openStream(path.data(), "wb");
    if (file != nullptr)
        std::setvbuf(file, nullptr, _IONBF, 0);  // each line is one write and survives a crash
    return file;
}

void WriteLine(std::FILE* file, const CLogLine& line)
{
    if (file != nullptr)
        KvPlatformDisk().writeStream(file, line.GetText(), line.GetLength());
}

void CloseLogFile(std::FILE*& file)
{
    if (file != nullptr)
        KvPlatformDisk().closeStream(file);
    file = nullptr;
}

}  // namespace

void KvLogSetMasks(const CKvLogMasks& masks)
{
    s_masks = masks;
}

void KvLogInit(const char* name)
{
    KvLogRelease();
    KvPlatformFolders().create("_logs");
    if (std::strlen(name) > kMaxNameLength)
        return;
    s_mainFile = OpenLogFile(name, "", "");
    for (std::size_t i = 0; i < kLevels.size(); ++i)
        s_levelFiles[i] = OpenLogFile(name, "_", kLevels[i].fileSuffix);
}

void KvLog(ELogLevel level, ELogType type, int indent, const char* format, ...)
{
    if (!HasAny(s_masks.levels, level) || !HasAny(s_masks.types, type))
        return;

    CLogLine line;
    const CKvLocalTime now = KvPlatformLocalTime();
    line.AppendFormat("%02d:%02d:%02d ", now.hour, now.minute, now.second);
    for (const CLevelRow& row : kLevels)
        if (row.level == level)
            line.AppendFormat("%s", row.tag);
    line.AppendIndent(indent);
    std::va_list arguments;
    va_start(arguments, format);
    line.AppendFormatList(format, arguments);
    va_end(arguments);
    line.End();

    if (HasAny(s_masks.outputs, ELogOutput::Debugger))
        KvPlatformDebugOutput(line.GetText());
    if (HasAny(s_masks.outputs, ELogOutput::File)) {
        WriteLine(s_mainFile, line);
        for (std::size_t i = 0; i < kLevels.size(); ++i)
            if (HasAny(static_cast<unsigned int>(level), kLevels[i].level))
                WriteLine(s_levelFiles[i], line);
    }
    if (HasAny(s_masks.outputs, ELogOutput::Console))
        std::fputs(line.GetText(), stdout);
}

void KvLogRelease()
{
    CloseLogFile(s_mainFile);
    for (std::FILE*& file : s_levelFiles)
        CloseLogFile(file);
}
