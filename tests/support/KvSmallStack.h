// Runs code that must not recurse.

#pragma once

#include <functional>

/// Runs \a work to its end in a thread with a stack of 64 KiB, or the least that the system gives.
/// A recursion of some hundred levels overflows it.
void KvRunOnSmallStack(const std::function<void()>& work);
