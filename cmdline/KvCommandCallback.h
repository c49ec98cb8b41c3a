// What a program wants to have called when a command begins or ends: a function, or a member
// function of its own class derived from CKvResult, written as it stands:
//
//     class CBuildResult : public CKvResult
//     {
//     public:
//         EKvParseResult OnBuild() { m_isBuild = true; return PARSE_RESULT_SUCCESS; }
//     };
//     descriptor.AddCommand("build", "Build all", 0, &CBuildResult::OnBuild);
//     CBuildResult result;
//     CKvParser parser(&descriptor, &result);
//
// Whoever declares member functions of CBuildResult parses into a CBuildResult. A member function
// is never called on the plain result that a parser makes for itself.

#pragma once

#include <cstddef>

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

}  // namespace KvCmdLine
