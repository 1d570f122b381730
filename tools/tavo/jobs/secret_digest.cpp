#include "jobs/secret_digest.h"

#include <fmt/format.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>
#include <stdexcept>
#include <vector>

namespace tavo::cli {

SecretDigest::SecretDigest(std::string key) : key_(std::move(key)) {
  if (key_.size() < kShortestKey) {
    throw std::invalid_argument(fmt::format("a key of at least {} bytes is needed", kShortestKey));
  }
}

SecretDigest::~SecretDigest() {
  OPENSSL_cleanse(key_.data(), key_.size());
}

std::string SecretDigest::of(std::string_view value) const {
  constexpr size_t kShown = 8;  // bytes: enough to distinguish a million values
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned size = 0;
  std::vector<unsigned char> bytes(value.begin(), value.end());
  if (HMAC(EVP_sha256(), key_.data(), static_cast<int>(key_.size()), bytes.data(), bytes.size(),
           digest.data(), &size) == nullptr) {
    throw std::runtime_error("the digest of a secret could not be made");
  }
  OPENSSL_cleanse(bytes.data(), bytes.size());
  std::string text = "hmac:";
  for (size_t i = 0; i < kShown; ++i) text += fmt::format("{:02x}", digest[i]);
  return text;
}

}  // namespace tavo::cli
