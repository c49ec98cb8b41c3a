#include "cmdline/KvParameterCallback.h"

#include "cmdline/KvResult.h"

namespace KvCmdLine {

EKvParseResult KvParameterCallback::Call(CKvResult* result, const CKvParameterValue& value) const
{
    if (m_member == nullptr || result == nullptr)
        return PARSE_RESULT_SUCCESS;
    return (result->*m_member)(value);
}

}  // namespace KvCmdLine
