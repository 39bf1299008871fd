// Detects the sanitizers that replace functions of the C library.
#pragma once

// VREL_TEST_HAS_SANITIZER is defined under AddressSanitizer and ThreadSanitizer of g++ and clang++.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VREL_TEST_HAS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VREL_TEST_HAS_SANITIZER
#endif
#endif
