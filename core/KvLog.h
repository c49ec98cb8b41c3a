// The process's diagnostic log. A message of a level and a type that the masks let pass becomes one
// stamped line for the debugger's output, the log files below the folder "_logs" and the console.

#pragma once

/// How grave a message is. Bits: a message may have several, its line then shows no level.
enum class ELogLevel : unsigned int
{
    Info = 1,
    Profile = 2,
    Warning = 4,
    Error = 8,
    Fatal = 16
};

constexpr ELogLevel operator|(ELogLevel left, ELogLevel right)
{
    return static_cast<ELogLevel>(static_cast<unsigned int>(left) |
                                  static_cast<unsigned int>(right));
}

/// Which area a message comes from. Bits; a host may use the others for areas of its own.
enum class ELogType : unsigned int
{
    /// Identifiers without a registered text, and reports of resource pools.
    Identifier = 0x2,
    /// Scans of resource folders that failed.
    ResourceScan = 0x4,
    /// Resources loaded, pools created and released.
    Resource = 0x20
};

/// Where lines go. Bits.
enum class ELogOutput : unsigned int
{
    File = 1,
    Debugger = 2,
    Console = 4
};

/// What passes, as sums of the bits above; the values here are those at the start.
struct CKvLogMasks
{
    unsigned int levels = 0x0F;
    unsigned int types = 0x107FF;
    unsigned int outputs = 3;
};

/// Replaces the masks of the whole process; they hold for every later message, whatever KvLogInit()
/// and KvLogRelease() do. The masks at the start come back with KvLogSetMasks({}).
void KvLogSetMasks(const CKvLogMasks& masks);

/// Closes what is open, then creates "_logs" in the current folder and starts its six files afresh:
/// NAME.log for every line and NAME_info, _profile, _warning, _error and _fatal.log by level.
///
/// Errors: none are told; lines for a file that could not be created are lost. A name of more than
///         237 bytes opens no file.
void KvLogInit(const char* name);

/// Logs one message, formatted as std::printf does: "09:05:07 [WARNING] text", with two blanks
/// before the text for each unit of \a indent. A line has at most 8191 bytes with its line feed;
/// what would be longer is cut before it.
#ifdef __GNUC__
[[gnu::format(printf, 4, 5)]]
#endif
void KvLog(ELogLevel level, ELogType type, int indent, const char* format, ...);

/// Closes the files; later messages reach no file until the next KvLogInit().
void KvLogRelease();
