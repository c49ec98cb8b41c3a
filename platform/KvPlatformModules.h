// Modules that are loaded while the program runs. Paths follow the rules of platform/KvPlatform.h.

#pragma once

/// Loads a module, or counts one more use of it when it is loaded already. Every name that it
/// leaves open must be resolved at once. A name without separators is looked for where the host
/// keeps its libraries, not in the current folder.
///
/// Ownership: each module is given back with KvPlatformReleaseModule().
/// Errors:    null when it is absent, no module of this host or leaves a name open.
[[nodiscard]] void* KvPlatformLoadModule(const char* path);

/// The address of what a module, or a module that it was linked with, exports under this name.
///
/// Errors: null when there is none.
[[nodiscard]] void* KvPlatformFindInModule(void* module, const char* name);

void KvPlatformReleaseModule(void* module);
