// Counts what operator new is asked for on this thread, and lets it fail; allocation.cpp replaces it.
#ifndef WIRELINES_TESTS_MODULES_ALLOCATION_HPP
#define WIRELINES_TESTS_MODULES_ALLOCATION_HPP

// The thread sanitizer has an operator new that cannot be replaced; what needs this one is skipped there.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ALLOCATIONS_HIDDEN
#endif
#elif defined(__SANITIZE_THREAD__)
#define ALLOCATIONS_HIDDEN
#endif

#ifdef ALLOCATIONS_HIDDEN
#define SKIP_IF_ALLOCATIONS_HIDDEN() GTEST_SKIP() << "operator new cannot be replaced"
#else
#define SKIP_IF_ALLOCATIONS_HIDDEN() (void)0
#endif

extern constinit thread_local int g_allocations;
extern constinit thread_local int g_allocations_left;  // the next one after so many fails; -1: none does

#endif
