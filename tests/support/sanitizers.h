// Whether the address sanitizer watches over this build: it needs addresses, descriptors and time
// of its own. Each compiler says so in its own way.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUORIN_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define QUORIN_ADDRESS_SANITIZER
#endif

#ifdef QUORIN_ADDRESS_SANITIZER
inline constexpr bool address_sanitizer = true;
#else
inline constexpr bool address_sanitizer = false;
#endif
