// What templates and rules are made of: parameters and sub-objects. All are values; a copy shares
// nothing with its source.

#pragma once

#include "core/KvArray.h"
#include "core/KvString.h"

enum EParameterKind : int
{
    PARAMETER_SINGLE = 0,
    PARAMETER_LIST = 1
};

/// A parameter; the type is text that is carried through and never interpreted. A single parameter
/// has exactly one value, a list any number.
struct CTemplateParameter
{
    EParameterKind kind = PARAMETER_SINGLE;
    TKvString<char> name;
    TKvString<char> type;
    CKvArray<TKvString<char>> values;
};

/// A template or a sub-object, nested to any depth. Copying and destroying do not recurse.
struct CTemplateObject
{
    CTemplateObject() = default;
    CTemplateObject(const CTemplateObject& other);
    CTemplateObject(CTemplateObject&&) noexcept = default;
    CTemplateObject& operator=(const CTemplateObject& other);
    CTemplateObject& operator=(CTemplateObject&& other) noexcept;
    ~CTemplateObject();

    TKvString<char> name;
    CKvArray<CTemplateParameter> parameters;
    CKvArray<CTemplateObject> subObjects;
};
