// The help page of a descriptor.

#include <cstdio>
#include <vector>

#include "cmdline/KvDescriptor.h"

namespace KvCmdLine {

namespace {

using CommandDescriptor = CKvDescriptor::CommandDescriptor;
using ParameterDescriptor = CKvDescriptor::ParameterDescriptor;

/// Prints the names of a switch; false when the table has none.
bool PrintNames(const CKvDescriptor::NameTable<ParameterDescriptor>& table,
                const ParameterDescriptor* parameter, const char* dashes)
{
    bool hasName = false;
    for (const auto& entry : table) {
        if (entry.target == parameter) {
            std::printf("\n %s%s :", dashes, entry.name.GetText());
            hasName = true;
        }
    }
    return hasName;
}

void PrintSwitches(const CommandDescriptor& command)
{
    if (command.switches.IsEmpty())
        return;
    std::printf("Options:");
    for (const auto& parameter : command.switches) {
        const bool hasShort = PrintNames(command.shortNames, parameter.get(), "-");
        const bool hasLong = PrintNames(command.longNames, parameter.get(), "--");
        if (hasShort || hasLong)
            std::printf(" %s", parameter->help.GetText());
    }
    std::printf("\n");
}

void PrintArguments(const CommandDescriptor& command)
{
    if (command.arguments.IsEmpty())
        return;
    std::printf("Expected arguments:\n");
    int place = 0;
    for (const auto& parameter : command.arguments)
        std::printf(" (%d) %s\n", ++place, parameter->help.GetText());
}

}  // namespace

void CKvDescriptor::PrintHelp() const
{
    std::printf("%s\n", m_help.GetText());
    std::printf("Usage: program [command [subcommand...]] [options...] [extra arguments...]\n");

    // Each sub-command is followed by its own section at once: the next one lies on top.
    std::vector<const CommandDescriptor*> pending{&m_root};
    while (!pending.empty()) {
        const CommandDescriptor& command = *pending.back();
        pending.pop_back();
        if (&command != &m_root)
            std::printf(" * %s : %s\n", command.name.GetText(), command.help.GetText());
        PrintSwitches(command);
        PrintArguments(command);
        const int count = command.subCommands.GetCount();
        if (count > 0)
            std::printf("Commands:\n");
        for (int i = count - 1; i >= 0; --i)
            pending.push_back(command.subCommands[i].get());
    }
}

}  // namespace KvCmdLine
