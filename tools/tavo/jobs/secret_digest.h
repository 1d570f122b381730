// Digests that compare secrets without showing them.
#pragma once

#include <string>
#include <string_view>

namespace tavo::cli {

// A keyed digest (HMAC with SHA-256). Only with the key can values be guessed and verified.
class SecretDigest {
 public:
  static constexpr size_t kShortestKey = 16;  // bytes

  // key: at least kShortestKey bytes, else std::invalid_argument.
  explicit SecretDigest(std::string key);
  ~SecretDigest();
  SecretDigest(const SecretDigest&) = delete;
  SecretDigest& operator=(const SecretDigest&) = delete;

  // The digest of a UTF-8 value, such as "hmac:0123456789abcdef".
  std::string of(std::string_view value) const;

 private:
  std::string key_;
};

}  // namespace tavo::cli
