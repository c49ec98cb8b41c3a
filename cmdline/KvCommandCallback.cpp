#include "cmdline/KvCommandCallback.h"

#include "cmdline/KvResult.h"

namespace KvCmdLine {

EKvParseResult KvCommandCallback::Call(CKvResult* result) const
{
    if (m_member != nullptr)
        return result != nullptr ? (result->*m_member)() : PARSE_RESULT_SUCCESS;
    return m_function != nullptr ? m_function(result) : PARSE_RESULT_SUCCESS;
}

}  // namespace KvCmdLine
