// A module of code that is loaded and released while the program runs.

#pragma once

#include "core/KvString.h"

class CKvDynamicLibrary
{
public:
    /// Loads nothing yet. A file name without separators is looked for where the host keeps its
    /// libraries.
    explicit CKvDynamicLibrary(const TKvString<char>& fileName) : m_fileName(fileName) {}
    CKvDynamicLibrary(const CKvDynamicLibrary&) = delete;
    CKvDynamicLibrary& operator=(const CKvDynamicLibrary&) = delete;

    /// Releases.
    virtual ~CKvDynamicLibrary() { Release(); }

    /// Loads the module, unless it is loaded. To load it runs code of its own.
    ///
    /// Errors: false when the file is absent, no module of this host, or needs what is not there.
    [[nodiscard]] bool Initialize();

    /// The address of what the module, or a module that it was linked with, exports under this
    /// name. It must not be used once the module is released.
    ///
    /// Errors: null when there is none, and unless the module is loaded.
    [[nodiscard]] void* GetFunctionAddress(const TKvString<char>& name) const;

    /// Gives the module back; the host unloads it when nobody else uses it.
    void Release();

private:
    // In the documented order.
    TKvString<char> m_fileName;
    void* m_module = nullptr;
};
