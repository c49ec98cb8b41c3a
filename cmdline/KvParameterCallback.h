// What a program wants to have called when a switch or an argument is given: a member function of
// its own class derived from CKvResult, under the rules of KvCommandCallback.h:
//
//     descriptor.AddSwitch("j", "jobs", "Jobs at a time", 2, &CBuildResult::OnJobs);

#pragma once

#include "cmdline/KvParameterValue.h"
#include "cmdline/KvParseResult.h"

namespace KvCmdLine {

class CKvResult;

class KvParameterCallback
{
public:
    using Member = EKvParseResult (CKvResult::*)(const CKvParameterValue&);

    /// No callback.
    KvParameterCallback() = default;

    /// 0 and nullptr are no callback.
    KvParameterCallback(Member member) : m_member(member) {}

    /// A member function of a class derived from CKvResult, not virtually; the same as
    /// static_cast<Member>(\a member).
    template <typename Result>
    KvParameterCallback(EKvParseResult (Result::*member)(const CKvParameterValue&))
        : m_member(static_cast<Member>(member))
    {
    }

    [[nodiscard]] bool IsMember() const { return m_member != nullptr; }

    /// Calls the member function on \a result, which must be of its class.
    ///
    /// Errors: 0 when there is no callback or no result.
    EKvParseResult Call(CKvResult* result, const CKvParameterValue& value) const;

private:
    Member m_member = nullptr;
};

}  // namespace KvCmdLine
