// What the tests of the name module share.
#ifndef WIRELINES_TESTS_MODULES_VEK4003_TEST_HPP
#define WIRELINES_TESTS_MODULES_VEK4003_TEST_HPP

#include <string>

#include "vek4003.h"

// All names, one a line.
inline std::string all_names() {
  std::string text;
  NickNameEach(
      [](NickNameKind kind, const char* key, const char* name, void* context) -> std::int32_t {
        static constexpr const char* kKinds[] = {"station", "ip", "ip6", "port", "sap", "type"};
        *static_cast<std::string*>(context) += std::string(kKinds[kind]) + " " + key + " " + name + "\n";
        return 1;
      },
      &text);
  return text;
}

inline std::string reason_text(const char* reason) {
  return reason == nullptr ? "" : reason;
}

#endif
