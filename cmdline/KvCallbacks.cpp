#include "cmdline/KvCallbacks.h"

#include "cmdline/KvResult.h"

// GCC's sanitizer takes the object of a derived class for a wrong one when its CKvResult is not the
// first base, since it looks where the member function's own class begins.
#ifdef __GNUC__
#define KV_CALLS_MEMBERS __attribute__((no_sanitize("vptr")))
#else
#define KV_CALLS_MEMBERS
#endif

namespace KvCmdLine {

KV_CALLS_MEMBERS EKvParseResult KvCommandCallback::Call(CKvResult* result) const
{
    if (m_member != nullptr)
        return result != nullptr ? (result->*m_member)() : PARSE_RESULT_SUCCESS;
    return m_function != nullptr ? m_function(result) : PARSE_RESULT_SUCCESS;
}

KV_CALLS_MEMBERS EKvParseResult KvParameterCallback::Call(CKvResult* result,
                                                          const CKvParameterValue& value) const
{
    if (m_member == nullptr || result == nullptr)
        return PARSE_RESULT_SUCCESS;
    return (result->*m_member)(value);
}

}  // namespace KvCmdLine
