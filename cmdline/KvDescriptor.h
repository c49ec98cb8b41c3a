// The declaration of a program's command line: a tree of commands, each with switches and
// positional arguments, their help and callbacks. It is made once, in one chain of calls, and then
// serves any number of parsers:
//
//     CKvDescriptor descriptor;
//     descriptor.SetHelp("Builds things")
//         .AddSwitch("v", "verbose", "More output")
//         .BeginCommand("build", "Build one target")
//         .AddArgument("target", "What to build")
//         .EndCommand();

#pragma once

#include <memory>

#include "cmdline/KvCallbacks.h"
#include "cmdline/KvParameterValue.h"
#include "core/KvArray.h"
#include "core/KvString.h"

namespace KvCmdLine {

/// Declaring calls apply to the command being declared, the root at first. Names are compared
/// exactly; the first registration of a name in a table keeps it, later ones are dropped silently.
/// Null texts are empty unless a function says otherwise.
class CKvDescriptor
{
public:
    /// A switch or a positional argument.
    struct ParameterDescriptor
    {
        // In the documented order.
        CKvParameterValue defaultValue;  ///< also says the parameter's type
        KvParameterCallback callback;
        TKvString<char> help;
    };

    /// A name and what it stands for.
    template <typename T>
    struct NameEntry
    {
        TKvString<char> name;
        const T* target;
    };

    template <typename T>
    using NameTable = CKvArray<NameEntry<T>>;

    struct CommandDescriptor
    {
        CommandDescriptor() = default;
        CommandDescriptor(const CommandDescriptor&) = delete;
        CommandDescriptor& operator=(const CommandDescriptor&) = delete;

        // In the documented order.
        TKvString<char> name;
        TKvString<char> help;
        CommandDescriptor* parent = nullptr;  ///< null for the root
        KvCommandCallback endCallback;
        KvCommandCallback beginCallback;
        CKvArray<std::unique_ptr<CommandDescriptor>> subCommands;
        NameTable<CommandDescriptor> subCommandNames;
        CKvArray<std::unique_ptr<ParameterDescriptor>> switches;
        NameTable<ParameterDescriptor> shortNames;
        NameTable<ParameterDescriptor> longNames;
        CKvArray<std::unique_ptr<ParameterDescriptor>> arguments;
        NameTable<ParameterDescriptor> argumentNames;
    };

    CKvDescriptor() = default;
    CKvDescriptor(const CKvDescriptor&) = delete;
    CKvDescriptor& operator=(const CKvDescriptor&) = delete;
    ~CKvDescriptor();

    /// What PrintHelp() begins with.
    CKvDescriptor& SetHelp(const char* help);

    /// Declares a sub-command, to which the following calls apply until its EndCommand(). Mind the
    /// order of the callbacks.
    ///
    /// Errors: nothing for a null name; its EndCommand() then ends the command around it.
    CKvDescriptor& BeginCommand(const char* name, const char* help,
                                const KvCommandCallback& endCallback = {},
                                const KvCommandCallback& beginCallback = {});

    /// Goes back to the command around this one; nothing at the root.
    CKvDescriptor& EndCommand();

    /// A sub-command with no sub-commands and parameters of its own; nothing for a null name.
    CKvDescriptor& AddCommand(const char* name, const char* help,
                              const KvCommandCallback& endCallback = {},
                              const KvCommandCallback& beginCallback = {});

    /// Declares a switch of the default value's type, for this command and all below it. A null or
    /// empty name is none; the short one may have several letters.
    CKvDescriptor& AddSwitch(const char* shortName, const char* longName, const char* help,
                             const CKvParameterValue& defaultValue = {},
                             const KvParameterCallback& callback = {});

    /// Declares the next positional argument, of the default value's type. A null name is none.
    CKvDescriptor& AddArgument(const char* name, const char* help,
                               const CKvParameterValue& defaultValue = PARAMETER_TYPE_STRING,
                               const KvParameterCallback& callback = {});

    /// Give a switch one more short or long name in this command. Null means the switch declared
    /// last, as long as no argument and no beginning or end of a command came after it.
    ///
    /// Ownership: \a parameter belongs to this descriptor, or lives as long.
    /// Errors: nothing for a null name, and when there is no such switch.
    CKvDescriptor& AddAlias(const char* name, const ParameterDescriptor* parameter = nullptr);
    CKvDescriptor& AddLongAlias(const char* name, const ParameterDescriptor* parameter = nullptr);

    /// Prints the help page to standard output: the program's help, the usage, then the switches,
    /// arguments and sub-commands of every command, each command behind the one it belongs to.
    void PrintHelp() const;

    [[nodiscard]] const CommandDescriptor* GetRootCommand() const { return &m_root; }

    /// These look a name up in \a command alone, or from \a command upwards to the root. Null when
    /// there is none, or for null.
    ///
    /// Cost: linear in the names of the tables searched.
    [[nodiscard]] static const CommandDescriptor* FindSubCommand(const CommandDescriptor* command,
                                                                 const char* name);
    [[nodiscard]] static const ParameterDescriptor* FindSwitch(const CommandDescriptor* command,
                                                               const char* name, bool isLong);
    [[nodiscard]] static const ParameterDescriptor* FindArgument(const CommandDescriptor* command,
                                                                 const char* name);

    /// The positional argument with this number, which counts from 0 through the arguments of the
    /// root first and of \a command last; null beyond them.
    [[nodiscard]] static const ParameterDescriptor* FindArgumentAt(const CommandDescriptor* command,
                                                                   int index);

private:
    // In the documented order.
    TKvString<char> m_help;
    CommandDescriptor m_root;
    CommandDescriptor* m_declared = &m_root;
    const ParameterDescriptor* m_lastSwitch = nullptr;
};

}  // namespace KvCmdLine
