// A named value that a user tunes in an editor's property panel. The kinds of values have a file
// each; groups of parameters own them.

#pragma once

#include "core/KvString.h"

/// Base of all parameters. Virtual functions stand in the documented order. Parameters copy as
/// values; copying through the base copies the name alone.
class CKvParameter
{
public:
    enum EType : int
    {
        TYPE_INT,
        TYPE_FLOAT,
        TYPE_COLOR,
        TYPE_COLOR_GRADIENT
    };

    explicit CKvParameter(const TKvString<char>& name) : m_name(name) {}
    CKvParameter(const CKvParameter&) = default;
    CKvParameter& operator=(const CKvParameter&) = default;
    virtual ~CKvParameter() = default;

    virtual EType GetType() const = 0;

    /// Writes the value as a short text, cut to \a size - 1 characters. The buffer's last character
    /// becomes a terminator in any case.
    ///
    /// Errors: nothing is written to a null buffer or one of \a size below 1.
    virtual void GetValueAsText(char* buffer, int size) const = 0;

    const TKvString<char>& GetName() const { return m_name; }

protected:
    /// Writes \a text as GetValueAsText() has to.
    static void WriteText(const char* text, char* buffer, int size);

private:
    TKvString<char> m_name;
};
