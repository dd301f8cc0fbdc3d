// The program writes UTF-8 to every console, whatever the locale (start.cpp).
#pragma once

#define CODESET 0
#define LC_CTYPE_MASK 0

typedef const char* locale_t;

inline locale_t newlocale(int, const char*, locale_t) {
  return "UTF-8";
}
inline void freelocale(locale_t) {}
inline const char* nl_langinfo_l(int, locale_t locale) {
  return locale;
}
