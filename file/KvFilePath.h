// Path texts: splitting them and rewriting them in the library's native form, which separates
// folders by backslashes. Nothing here looks at the disk.

#pragma once

#include "core/KvString.h"

/// A path as a value: it holds the text as given, which need not name anything.
class CKvFilePath
{
public:
    /// \a toNative converts the copied text with ConvertToNativePath().
    CKvFilePath(const char* path, bool toNative);
    CKvFilePath(const TKvString<char>& path, bool toNative);
    CKvFilePath(const CKvFilePath&) = default;
    CKvFilePath& operator=(const CKvFilePath&) = default;
    virtual ~CKvFilePath();

    CKvFilePath& operator=(const TKvString<char>& path);
    void SetNull();
    const TKvString<char>& GetAsString() const { return m_path; }

    /// Replaces every slash by a backslash.
    static void ConvertToNativePath(TKvString<char>& path);

    /// True for a text that begins with an upper-case drive letter, a colon and a backslash.
    static bool IsAbsolute(const TKvString<char>& path);

    /// Converts \a path to native form and, unless it is then absolute, puts \a base in native form
    /// and a separator, where base does not end with one, in front of it.
    static void ConvertToAbsolute(TKvString<char>& path, const TKvString<char>& base);

    /// Splits "data/levels\a.b.level" into dir "data/levels\", name "a.b" and ext "level". Without
    /// separator dir is empty; without dot ext is empty.
    void extractPath(TKvString<char>& dir, TKvString<char>& name, TKvString<char>& ext) const;

    /// The dir of extractPath(), with its separator.
    TKvString<char> getFilePath() const;

    /// The name of extractPath(), without extension.
    TKvString<char> getFileName() const;

    /// The ext of extractPath(), without dot.
    TKvString<char> getFileExt() const;

    /// All that follows the last separator, as it stands.
    TKvString<char> getFileNameExt() const;

private:
    TKvString<char> m_path;
};
