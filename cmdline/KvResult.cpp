#include "cmdline/KvResult.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

#include "core/KvNumberText.h"

namespace KvCmdLine {

namespace {

constexpr std::size_t kErrorBufferSize = 2048;

bool ReadsAsTrue(const char* word)
{
    return kvStrcmpNoCase(word, "1") == 0 || kvStrcmpNoCase(word, "true") == 0 ||
           kvStrcmpNoCase(word, "yes") == 0;
}

/// The value of a parameter of type bool or above.
CKvParameterValue ReadValue(EKvParameterType type, const char* word)
{
    switch (type) {
        case PARAMETER_TYPE_BOOL:
            return ReadsAsTrue(word);
        case PARAMETER_TYPE_INT:
            return kvStringToS32(word);
        case PARAMETER_TYPE_FLOAT:
            return kvStringToFloat(word);
        default:
            return word;
    }
}

}  // namespace

void CKvResult::Initialize(const CKvDescriptor* descriptor)
{
    m_descriptor = descriptor;
    m_currentCommand = nullptr;
    m_selectedCommand = nullptr;
    m_values.Clear();
    m_lastError = nullptr;
    BeginCommand(descriptor != nullptr ? descriptor->GetRootCommand() : nullptr);
}

void CKvResult::Terminate()
{
    while (m_currentCommand != nullptr) {
        const CommandDescriptor* const ended = m_currentCommand;
        EndCommand();
        // An override may have left it open.
        if (m_currentCommand == ended)
            m_currentCommand = ended->parent;
    }
}

void CKvResult::BeginCommand(const CommandDescriptor* command)
{
    if (command == nullptr)
        return;
    m_currentCommand = command;
    m_selectedCommand = command;
    Run(command->beginCallback);
}

void CKvResult::EndCommand()
{
    if (m_currentCommand == nullptr)
        return;
    const CommandDescriptor* const ended =
        std::exchange(m_currentCommand, m_currentCommand->parent);
    Run(ended->endCallback);
}

void CKvResult::ProcessArgument(const ParameterDescriptor* parameter, bool flag)
{
    if (parameter == nullptr)
        return;
    const EKvParameterType type = parameter->defaultValue.GetType();
    if (type != PARAMETER_TYPE_SWITCH && type != PARAMETER_TYPE_BOOL)
        return;
    Store(parameter, type == PARAMETER_TYPE_SWITCH ? CKvParameterValue() : CKvParameterValue(flag));
    if (HasCallback(parameter))
        parameter->callback.Call(this, flag);
}

void CKvResult::ProcessArgument(const ParameterDescriptor* parameter, const char* word)
{
    const char* const text = word != nullptr ? word : "";
    if (parameter == nullptr) {
        m_extraArguments.Add(text);
        return;
    }

    const EKvParameterType type = parameter->defaultValue.GetType();
    if (type < PARAMETER_TYPE_BOOL || type > PARAMETER_TYPE_STRING)
        return;
    if (!HasCallback(parameter)) {
        Store(parameter, ReadValue(type, text));
        return;
    }
    // The callback's value is its own: what it does may move the stored one.
    const CKvParameterValue told =
        type == PARAMETER_TYPE_BOOL ? CKvParameterValue(text) : ReadValue(type, text);
    Store(parameter, ReadValue(type, text));
    parameter->callback.Call(this, told);
}

const char* CKvResult::GetCommand() const
{
    if (m_selectedCommand == nullptr || m_selectedCommand->parent == nullptr ||
        m_selectedCommand->name.IsEmpty())
        return nullptr;
    return m_selectedCommand->name.GetText();
}

const char* CKvResult::GetExtraArgument(int index, const char* fallback) const
{
    if (index < 0 || index >= m_extraArguments.GetCount())
        return fallback;
    return m_extraArguments[index].GetText();
}

bool CKvResult::IsSwitchSet(const char* name, bool isLong) const
{
    return FindGiven(CKvDescriptor::FindSwitch(m_selectedCommand, name, isLong)) != nullptr;
}

const CKvParameterValue& CKvResult::GetSwitch(const char* name, bool isLong) const
{
    return GetValue(CKvDescriptor::FindSwitch(m_selectedCommand, name, isLong));
}

bool CKvResult::IsArgumentSet(const char* name) const
{
    return FindGiven(CKvDescriptor::FindArgument(m_selectedCommand, name)) != nullptr;
}

const CKvParameterValue& CKvResult::GetArgument(const char* name) const
{
    return GetValue(CKvDescriptor::FindArgument(m_selectedCommand, name));
}

EKvParseResult CKvResult::SetLastError(EKvParseResult code, const char* format, ...)
{
    char text[kErrorBufferSize] = {};
    if (format != nullptr) {
        std::va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
    }
    m_lastError = text;
    return code;
}

void CKvResult::Run(const KvCommandCallback& callback)
{
    if (m_runsMembers || !callback.IsMember())
        callback.Call(this);
}

bool CKvResult::HasCallback(const ParameterDescriptor* parameter) const
{
    return m_runsMembers && parameter->callback.IsMember();
}

void CKvResult::Store(const ParameterDescriptor* parameter, CKvParameterValue value)
{
    for (GivenValue& given : m_values) {
        if (given.parameter == parameter) {
            given.value = std::move(value);
            return;
        }
    }
    m_values.Add({parameter, std::move(value)});
}

const CKvResult::GivenValue* CKvResult::FindGiven(const ParameterDescriptor* parameter) const
{
    for (const GivenValue& given : m_values) {
        if (given.parameter == parameter)
            return &given;
    }
    return nullptr;
}

const CKvParameterValue& CKvResult::GetValue(const ParameterDescriptor* parameter) const
{
    static const CKvParameterValue kUnknown(false);
    const GivenValue* given = FindGiven(parameter);
    if (given != nullptr)
        return given->value;
    return parameter != nullptr ? parameter->defaultValue : kUnknown;
}

}  // namespace KvCmdLine
