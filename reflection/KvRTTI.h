// The type record of a reflective class: a name and a link to the parent class's record, so that
// code can ask whether an object is of a class or of one derived from it. The language's own type
// information is not used. Each reflective class has one static record and hands it out:
//
//   class CEntity : public CKvManaged {
//       static const CKvRTTI TYPE;    // in the source: ("CEntity", &CKvManaged::TYPE)
//       const CKvRTTI& GetRtti() const override { return TYPE; }

#pragma once

/// A record is its class: it lives for the process and has no copies. Fields stand in the
/// documented order.
class CKvRTTI
{
public:
    /// Counts the record in the totals. The parent may still be waiting for its own static
    /// initialisation; null makes a root.
    ///
    /// Ownership: the name is the caller's and lives as long as the record, as a literal does.
    CKvRTTI(const char* name, const CKvRTTI* parent);
    CKvRTTI(const CKvRTTI&) = delete;
    CKvRTTI& operator=(const CKvRTTI&) = delete;

    const char* GetName() const { return m_name; }

    bool IsExactly(const CKvRTTI& other) const { return this == &other; }

    /// Whether \a other is this record or one of its ancestors.
    bool IsDerived(const CKvRTTI& other) const;

    // Units: bytes.
    int GetMemoryUsage() const;
    int GetDebugInfosMemoryUsage() const;

    // The sums over all records made so far.
    static int GetTotalMemoryUsage() { return m_sTotalMemoryUsage; }
    static int GetTotalDebugInfosMemoryUsage() { return m_sDebugInfosMemoryUsage; }

private:
    // Constant-initialised, so that records of any source may count first.
    static int m_sTotalMemoryUsage;
    static int m_sDebugInfosMemoryUsage;

    const char* m_name;
    const CKvRTTI* m_parent;
};
