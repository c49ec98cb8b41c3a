#include "cmdline/KvParser.h"

#include <climits>
#include <utility>

namespace KvCmdLine {

namespace {

constexpr char kNegation[] = "no-";
constexpr unsigned kNegationLength = sizeof kNegation - 1;

bool IsFlag(const CKvDescriptor::ParameterDescriptor* parameter)
{
    const EKvParameterType type = parameter->defaultValue.GetType();
    return type == PARAMETER_TYPE_SWITCH || type == PARAMETER_TYPE_BOOL;
}

bool IsPureSwitch(const CKvDescriptor::ParameterDescriptor* parameter)
{
    return parameter->defaultValue.GetType() == PARAMETER_TYPE_SWITCH;
}

}  // namespace

CKvParser::CKvParser(const CKvDescriptor* descriptor, CKvResult* result)
    : m_descriptor(descriptor),
      m_result(result != nullptr ? result : new CKvResult),
      m_ownsResult(result == nullptr)
{
    if (m_ownsResult)
        m_result->m_runsMembers = false;
}

CKvParser::~CKvParser()
{
    if (m_ownsResult)
        delete m_result;
}

EKvParseResult CKvParser::Parse(CKvParameterIterator& words)
{
    m_positionalIndex = -1;
    m_result->Initialize(m_descriptor);

    bool looksForCommands = true;
    const ParameterDescriptor* waiting = nullptr;
    while (const char* word = words.GetNext()) {
        if (looksForCommands) {
            const CKvDescriptor::CommandDescriptor* command =
                CKvDescriptor::FindSubCommand(m_result->GetCurrentCommand(), word);
            if (command != nullptr) {
                m_result->BeginCommand(command);
                continue;
            }
            looksForCommands = false;
        }

        EKvParseResult parsed = PARSE_RESULT_SUCCESS;
        if (waiting != nullptr)
            m_result->ProcessArgument(std::exchange(waiting, nullptr), word);
        else if (word[0] != '-')
            ParsePositional(word);
        else if (word[1] == '-')
            parsed = ParseLongForm(word + 2, waiting);
        else
            parsed = ParseShortForm(word + 1, waiting);
        if (parsed != PARSE_RESULT_SUCCESS)
            return parsed;
    }
    m_result->Terminate();
    return PARSE_RESULT_SUCCESS;
}

EKvParseResult CKvParser::Parse(int count, const char* const* words)
{
    CKvParameterIteratorArray iterator(count, words);
    return Parse(iterator);
}

EKvParseResult CKvParser::Parse(const char* line)
{
    CKvParameterIteratorSplit iterator(line);
    return Parse(iterator);
}

EKvParseResult CKvParser::ParseLongForm(const char* name, const ParameterDescriptor*& waiting)
{
    const bool isNegated = kvStrncmp(name, kNegation, kNegationLength) == 0;
    if (isNegated)
        name += kNegationLength;

    const ParameterDescriptor* parameter =
        CKvDescriptor::FindSwitch(m_result->GetCurrentCommand(), name, true);
    if (parameter == nullptr)
        return m_result->SetLastError(PARSE_RESULT_INVALID_COMMAND_LINE,
                                      "Unknown long form parameter: --%s.", name);
    if (isNegated && IsPureSwitch(parameter))
        return m_result->SetLastError(PARSE_RESULT_INVALID_COMMAND_LINE,
                                      "The switch '%s' cannot be preceded by 'no-'.", name);

    if (IsFlag(parameter))
        m_result->ProcessArgument(parameter, !isNegated);
    else if (isNegated)
        m_result->ProcessArgument(parameter, "");
    else
        waiting = parameter;
    return PARSE_RESULT_SUCCESS;
}

EKvParseResult CKvParser::ParseShortForm(const char* names, const ParameterDescriptor*& waiting)
{
    if (*names == '\0')
        return m_result->SetLastError(PARSE_RESULT_INVALID_COMMAND_LINE,
                                      "Empty short form parameter.");

    // The whole word may be one name.
    const ParameterDescriptor* whole =
        names[1] != '\0' ? CKvDescriptor::FindSwitch(m_result->GetCurrentCommand(), names, false)
                         : nullptr;
    if (whole != nullptr) {
        if (IsFlag(whole))
            m_result->ProcessArgument(whole, true);
        else
            waiting = whole;
        return PARSE_RESULT_SUCCESS;
    }

    while (*names != '\0') {
        const char name[2] = {*names++, '\0'};
        const ParameterDescriptor* parameter =
            CKvDescriptor::FindSwitch(m_result->GetCurrentCommand(), name, false);
        if (parameter == nullptr)
            return m_result->SetLastError(PARSE_RESULT_INVALID_COMMAND_LINE,
                                          "Unknown short form parameter: -%s.", name);
        if (!IsFlag(parameter)) {
            if (*names != '\0')
                m_result->ProcessArgument(parameter, names);
            else
                waiting = parameter;
            return PARSE_RESULT_SUCCESS;
        }

        const bool isOff = *names == '-';
        if (isOff && IsPureSwitch(parameter))
            return m_result->SetLastError(
                PARSE_RESULT_INVALID_COMMAND_LINE,
                "The switch '%s' cannot be toggled off, unlike a boolean value.", name);
        if (isOff)
            ++names;
        m_result->ProcessArgument(parameter, !isOff);
    }
    return PARSE_RESULT_SUCCESS;
}

void CKvParser::ParsePositional(const char* word)
{
    if (m_positionalIndex < INT_MAX)
        ++m_positionalIndex;
    m_result->ProcessArgument(
        CKvDescriptor::FindArgumentAt(m_result->GetCurrentCommand(), m_positionalIndex), word);
}

}  // namespace KvCmdLine
