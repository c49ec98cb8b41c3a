#include "cmdline/KvDescriptor.h"

#include <cstdint>
#include <utility>

namespace KvCmdLine {

namespace {

using CommandDescriptor = CKvDescriptor::CommandDescriptor;
using ParameterDescriptor = CKvDescriptor::ParameterDescriptor;

template <typename T>
const T* FindName(const CKvDescriptor::NameTable<T>& table, const char* name)
{
    for (const CKvDescriptor::NameEntry<T>& entry : table) {
        if (kvStrcmp(entry.name.GetText(), name) == 0)
            return entry.target;
    }
    return nullptr;
}

template <typename T>
void EnterName(CKvDescriptor::NameTable<T>& table, const char* name, const T* target)
{
    if (FindName(table, name) == nullptr)
        table.Add({name, target});
}

bool HasName(const char* name)
{
    return name != nullptr && *name != '\0';
}

/// Looks a name up in one table of each command from \a command upwards.
const ParameterDescriptor* FindUpwards(
    const CommandDescriptor* command,
    CKvDescriptor::NameTable<ParameterDescriptor> CommandDescriptor::*table, const char* name)
{
    if (name == nullptr)
        return nullptr;
    for (; command != nullptr; command = command->parent) {
        const ParameterDescriptor* found = FindName(command->*table, name);
        if (found != nullptr)
            return found;
    }
    return nullptr;
}

/// Appends a new parameter to the switches or arguments of a command.
const ParameterDescriptor* AddParameter(CKvArray<std::unique_ptr<ParameterDescriptor>>& parameters,
                                        const CKvParameterValue& defaultValue,
                                        const KvParameterCallback& callback, const char* help)
{
    auto parameter = std::make_unique<ParameterDescriptor>();
    parameter->defaultValue = defaultValue;
    parameter->callback = callback;
    parameter->help = help;
    const ParameterDescriptor* added = parameter.get();
    parameters.Add(std::move(parameter));
    return added;
}

}  // namespace

/// Takes the tree down from its leaves, however deep it is.
CKvDescriptor::~CKvDescriptor()
{
    CommandDescriptor* command = &m_root;
    while (command != nullptr) {
        const int count = command->subCommands.GetCount();
        if (count > 0) {
            command = command->subCommands[count - 1].get();
        } else {
            command = command->parent;
            if (command != nullptr)
                command->subCommands.RemoveLast();
        }
    }
}

CKvDescriptor& CKvDescriptor::SetHelp(const char* help)
{
    m_help = help;
    return *this;
}

CKvDescriptor& CKvDescriptor::BeginCommand(const char* name, const char* help,
                                           const KvCommandCallback& endCallback,
                                           const KvCommandCallback& beginCallback)
{
    if (name == nullptr)
        return *this;

    auto command = std::make_unique<CommandDescriptor>();
    command->name = name;
    command->help = help;
    command->parent = m_declared;
    command->endCallback = endCallback;
    command->beginCallback = beginCallback;

    CommandDescriptor* begun = command.get();
    m_declared->subCommands.Add(std::move(command));
    EnterName<CommandDescriptor>(m_declared->subCommandNames, name, begun);
    m_declared = begun;
    m_lastSwitch = nullptr;
    return *this;
}

CKvDescriptor& CKvDescriptor::EndCommand()
{
    if (m_declared->parent != nullptr) {
        m_declared = m_declared->parent;
        m_lastSwitch = nullptr;
    }
    return *this;
}

CKvDescriptor& CKvDescriptor::AddCommand(const char* name, const char* help,
                                         const KvCommandCallback& endCallback,
                                         const KvCommandCallback& beginCallback)
{
    if (name == nullptr)
        return *this;
    return BeginCommand(name, help, endCallback, beginCallback).EndCommand();
}

CKvDescriptor& CKvDescriptor::AddSwitch(const char* shortName, const char* longName,
                                        const char* help, const CKvParameterValue& defaultValue,
                                        const KvParameterCallback& callback)
{
    m_lastSwitch = AddParameter(m_declared->switches, defaultValue, callback, help);
    if (HasName(shortName))
        EnterName(m_declared->shortNames, shortName, m_lastSwitch);
    if (HasName(longName))
        EnterName(m_declared->longNames, longName, m_lastSwitch);
    return *this;
}

CKvDescriptor& CKvDescriptor::AddArgument(const char* name, const char* help,
                                          const CKvParameterValue& defaultValue,
                                          const KvParameterCallback& callback)
{
    const ParameterDescriptor* argument =
        AddParameter(m_declared->arguments, defaultValue, callback, help);
    m_lastSwitch = nullptr;
    if (name != nullptr)
        EnterName(m_declared->argumentNames, name, argument);
    return *this;
}

CKvDescriptor& CKvDescriptor::AddAlias(const char* name, const ParameterDescriptor* parameter)
{
    const ParameterDescriptor* named = parameter != nullptr ? parameter : m_lastSwitch;
    if (name != nullptr && named != nullptr)
        EnterName(m_declared->shortNames, name, named);
    return *this;
}

CKvDescriptor& CKvDescriptor::AddLongAlias(const char* name, const ParameterDescriptor* parameter)
{
    const ParameterDescriptor* named = parameter != nullptr ? parameter : m_lastSwitch;
    if (name != nullptr && named != nullptr)
        EnterName(m_declared->longNames, name, named);
    return *this;
}

const CommandDescriptor* CKvDescriptor::FindSubCommand(const CommandDescriptor* command,
                                                       const char* name)
{
    if (command == nullptr || name == nullptr)
        return nullptr;
    return FindName(command->subCommandNames, name);
}

const ParameterDescriptor* CKvDescriptor::FindSwitch(const CommandDescriptor* command,
                                                     const char* name, bool isLong)
{
    return FindUpwards(
        command, isLong ? &CommandDescriptor::longNames : &CommandDescriptor::shortNames, name);
}

const ParameterDescriptor* CKvDescriptor::FindArgument(const CommandDescriptor* command,
                                                       const char* name)
{
    return FindUpwards(command, &CommandDescriptor::argumentNames, name);
}

const ParameterDescriptor* CKvDescriptor::FindArgumentAt(const CommandDescriptor* command,
                                                         int index)
{
    // The arguments of a command follow those of all commands around it.
    std::int64_t first = 0;
    for (const CommandDescriptor* each = command; each != nullptr; each = each->parent)
        first += each->arguments.GetCount();
    if (index < 0 || index >= first)
        return nullptr;
    while (index < (first -= command->arguments.GetCount()))
        command = command->parent;
    return command->arguments[static_cast<int>(index - first)].get();
}

}  // namespace KvCmdLine
