// What a program wants to have called: when a command begins or ends, a function or a member
// function of its own class derived from CKvResult; when a switch or an argument is given, such a
// member function. Members are written as they stand:
//
//     class CBuildResult : public CKvResult
//     {
//     public:
//         EKvParseResult OnBuild() { return PARSE_RESULT_SUCCESS; }
//         EKvParseResult OnJobs(const CKvParameterValue& value) { m_jobs = value; ... }
//     };
//     descriptor.AddCommand("build", "Build all", 0, &CBuildResult::OnBuild)
//         .AddSwitch("j", "jobs", "Jobs at a time", 2, &CBuildResult::OnJobs);
//     CBuildResult result;
//     CKvParser parser(&descriptor, &result);
//
// Whoever declares member functions of CBuildResult parses into a CBuildResult. A member function
// is never called on the plain result that a parser makes for itself.

#pragma once

#include <cstddef>

#include "cmdline/KvParameterValue.h"
#include "cmdline/KvParseResult.h"

namespace KvCmdLine {

class CKvResult;

class KvCommandCallback
{
public:
    using Member = EKvParseResult (CKvResult::*)();
    using Function = EKvParseResult (*)(CKvResult*);

    /// No callback.
    KvCommandCallback() = default;
    KvCommandCallback(std::nullptr_t) {}

    /// No callback, whatever the number, so that 0 can be passed.
    KvCommandCallback(int) {}

    KvCommandCallback(Member member) : m_member(member) {}
    KvCommandCallback(Function function) : m_function(function) {}

    /// A member function of a class derived from CKvResult, not virtually; the same as
    /// static_cast<Member>(\a member).
    template <typename Result>
    KvCommandCallback(EKvParseResult (Result::*member)()) : m_member(static_cast<Member>(member))
    {
    }

    [[nodiscard]] bool IsMember() const { return m_member != nullptr; }

    /// Calls the member function on \a result, which must be of its class, or the function with
    /// \a result.
    ///
    /// Errors: 0 when there is no callback, or a member function and no result.
    EKvParseResult Call(CKvResult* result) const;

private:
    // In the documented order.
    Member m_member = nullptr;
    Function m_function = nullptr;
};

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
