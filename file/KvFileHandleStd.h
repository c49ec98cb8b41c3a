// Handles of plain disk files. Only the file layer makes them, after their stream has opened.

#pragma once

#include <cstdio>

#include "file/KvFileHandle.h"

/// A disk file, whatever the system. The name is the path as it was given.
class CKvFileHandleStd : public CKvFileHandle
{
public:
    EType GetType() const override { return EType::Disk; }
    const TKvString<char>& GetName() const override { return m_name; }
    EKvFileSystemOpenMode GetOpenMode() const override { return m_openMode; }

protected:
    CKvFileHandleStd(const TKvString<char>& name, EKvFileSystemOpenMode openMode)
        : m_name(name), m_openMode(openMode)
    {
    }

private:
    TKvString<char> m_name;
    EKvFileSystemOpenMode m_openMode;
};

/// A disk file on a C stream.
class CKvFileHandleStdPC : public CKvFileHandleStd
{
public:
    /// Ownership: the handle owns the stream; CKvFileSystemUnCached::Close() closes both.
    std::FILE* GetDescriptor() const { return m_stream; }

private:
    friend class CKvFileSystemUnCached;
    friend class CKvWholeFileWriter;

    /// Made before its stream opens, so that no stream is left behind when memory is short.
    CKvFileHandleStdPC(const TKvString<char>& name, EKvFileSystemOpenMode openMode)
        : CKvFileHandleStd(name, openMode)
    {
    }

    std::FILE* m_stream = nullptr;

    /// Set once a write came short. The file then has a hole, so closing it must not succeed.
    bool m_writeFailed = false;
};
