// What a parse found: the command selected, the values given, the words left over and the first
// error. A program that wants callbacks derives from it. It refers to the descriptor that was
// parsed against, which must outlive it.

#pragma once

#include "cmdline/KvDescriptor.h"

namespace KvCmdLine {

/// Virtual functions stand in the documented slot order. The parser calls them; whoever overrides
/// one calls that of this class too, unless what it records is not wanted.
class CKvResult
{
public:
    using ParameterDescriptor = CKvDescriptor::ParameterDescriptor;
    using CommandDescriptor = CKvDescriptor::CommandDescriptor;

    CKvResult() = default;
    CKvResult(const CKvResult&) = delete;
    CKvResult& operator=(const CKvResult&) = delete;
    virtual ~CKvResult() = default;

    /// Begins a parse: forgets the values and the error of the one before, but keeps its extra
    /// arguments, and begins the root command.
    virtual void Initialize(const CKvDescriptor* descriptor);

    /// Ends all commands that are open, the innermost first. After an error the parser does not
    /// call it, so that no end callback runs.
    virtual void Terminate();

    /// Makes \a command the current and the selected one, then runs its begin callback. Null is
    /// ignored.
    virtual void BeginCommand(const CommandDescriptor* command);

    /// Makes the command around the current one current, then runs the end callback of the ended
    /// one. Nothing when none is open.
    virtual void EndCommand();

    /// Stores a flag that was given and runs the parameter's callback with it. Nothing for a
    /// parameter that is no flag, and for null.
    virtual void ProcessArgument(const ParameterDescriptor* parameter, bool flag);

    /// Stores the value that the word reads as and runs the parameter's callback with it; with the
    /// word itself for a bool, which is true for "1", "true" and "yes" in any case. Numbers are
    /// read as kvStringToS32() and kvStringToFloat() do, so that no word is an error: "5x" is 5,
    /// "five" 0. A switch takes no word. A word without a parameter is an extra argument. A null
    /// word is empty.
    virtual void ProcessArgument(const ParameterDescriptor* parameter, const char* word);

    [[nodiscard]] const CKvDescriptor* GetDescriptor() const { return m_descriptor; }

    /// The innermost command that is open; null when none is.
    [[nodiscard]] const CommandDescriptor* GetCurrentCommand() const { return m_currentCommand; }

    /// The name of the command entered last; null for the root and for an empty name.
    [[nodiscard]] const char* GetCommand() const;

    /// The positional words that matched no declared argument, in order, of all parses so far.
    [[nodiscard]] int GetExtraArgumentCount() const { return m_extraArguments.GetCount(); }
    [[nodiscard]] const char* GetExtraArgument(int index, const char* fallback) const;

    /// Names are looked up from the selected command upwards to the root. The value is the one
    /// given in the parse, else the default value, else (unknown name) a bool false.
    ///
    /// Ownership: valid until the next parse and as long as the descriptor.
    [[nodiscard]] bool IsSwitchSet(const char* name, bool isLong) const;
    [[nodiscard]] const CKvParameterValue& GetSwitch(const char* name, bool isLong) const;
    [[nodiscard]] bool IsArgumentSet(const char* name) const;
    [[nodiscard]] const CKvParameterValue& GetArgument(const char* name) const;

    /// The text of the last error, "" when there is none.
    [[nodiscard]] const char* GetLastError() const { return m_lastError.GetText(); }

    /// Formats the text as std::printf does, stores its first 2047 bytes as the last error (null
    /// stores none) and gives \a code back.
#ifdef __GNUC__
    [[gnu::format(printf, 3, 4)]]
#endif
    EKvParseResult
    SetLastError(EKvParseResult code, const char* format, ...);

private:
    friend class CKvParser;

    struct GivenValue
    {
        const ParameterDescriptor* parameter;
        CKvParameterValue value;
    };

    void Run(const KvCommandCallback& callback);
    [[nodiscard]] bool HasCallback(const ParameterDescriptor* parameter) const;
    void Store(const ParameterDescriptor* parameter, CKvParameterValue value);
    [[nodiscard]] const GivenValue* FindGiven(const ParameterDescriptor* parameter) const;
    [[nodiscard]] const CKvParameterValue& GetValue(const ParameterDescriptor* parameter) const;

    // In the documented order.
    const CKvDescriptor* m_descriptor = nullptr;
    const CommandDescriptor* m_currentCommand = nullptr;
    const CommandDescriptor* m_selectedCommand = nullptr;
    CKvArray<GivenValue> m_values;  ///< one a parameter, in the order first given
    CKvArray<TKvString<char>> m_extraArguments;
    TKvString<char> m_lastError;

    /// False for the result that a parser makes for itself: no member function fits it.
    bool m_runsMembers = true;
};

}  // namespace KvCmdLine
