// The exported functions of the builder.
#include <cstring>
#include <new>

#include "building/builder.h"

struct TAVOBuilder {
  tavo::StatementBuilder statement;
};

namespace tavo {
namespace {

template <typename Begin>
uint32_t make_builder(const char* name, TAVOBuilder** builder, Begin begin) {
  if (builder == nullptr) return TAVO_BUILD_ARGUMENT_INVALID;
  *builder = nullptr;
  if (name == nullptr) return TAVO_BUILD_ARGUMENT_INVALID;
  auto* made = new (std::nothrow) TAVOBuilder;
  if (made == nullptr) return TAVO_BUILD_NO_MEMORY;
  const uint32_t status = begin(made->statement, name);
  if (status != TAVO_BUILD_OK) {
    delete made;
    return status;
  }
  *builder = made;
  return TAVO_BUILD_OK;
}

uint32_t add(TAVOBuilder* builder, const StatementBuilder::Name& name, const char* value,
             uint32_t value_type) {
  if (builder == nullptr) return TAVO_BUILD_ARGUMENT_INVALID;
  builder->statement.forget_problem();
  if (value == nullptr) return TAVO_BUILD_ARGUMENT_INVALID;
  return builder->statement.add(name, value, value_type);
}

uint32_t add_by_key(TAVOBuilder* builder, const char* key, uint32_t key_type, const char* value,
                    uint32_t value_type) {
  if (key == nullptr) return TAVO_BUILD_ARGUMENT_INVALID;
  return add(builder, {key, key_type}, value, value_type);
}

// A number as decimal digits.
class NumberText {
 public:
  explicit NumberText(int64_t number) {
    auto left = static_cast<uint64_t>(number);
    if (number < 0) left = 0 - left;
    *--first_ = 0;
    do {
      *--first_ = static_cast<char>('0' + left % 10);
      left /= 10;
    } while (left != 0);
    if (number < 0) *--first_ = '-';
  }
  const char* text() const {
    return first_;
  }

 private:
  char digits_[24];
  char* first_ = digits_ + sizeof digits_;
};

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVOBuilder_New(const char* provider, TAVOBuilder** builder) noexcept {
  return tavo::make_builder(provider, builder, [](auto& statement, const char* name) {
    return statement.begin_provider(name);
  });
}

uint32_t TAVOBuilder_NewLibrary(const char* library, TAVOBuilder** builder) noexcept {
  return tavo::make_builder(library, builder, [](auto& statement, const char* name) {
    return statement.begin_library(name);
  });
}

uint32_t TAVOBuilder_Add(TAVOBuilder* builder, const char* key, const char* value) noexcept {
  return tavo::add_by_key(builder, key, 0, value, TAVO_BUILD_ANY_TYPE);
}

uint32_t TAVOBuilder_AddNumber(TAVOBuilder* builder, const char* key, int64_t value) noexcept {
  return TAVOBuilder_Add(builder, key, tavo::NumberText(value).text());
}

uint32_t TAVOBuilder_AddType(TAVOBuilder* builder, uint32_t keyType, const char* value) noexcept {
  return tavo::add(builder, {{}, keyType}, value, TAVO_BUILD_ANY_TYPE);
}

uint32_t TAVOBuilder_AddTypeNumber(TAVOBuilder* builder, uint32_t keyType, int64_t value) noexcept {
  return TAVOBuilder_AddType(builder, keyType, tavo::NumberText(value).text());
}

uint32_t TAVOBuilder_AddPair(TAVOBuilder* builder, const char* key, uint32_t keyType,
                             const char* value, uint32_t valueType) noexcept {
  return tavo::add_by_key(builder, key, keyType, value, valueType);
}

size_t TAVOBuilder_GetStatement(TAVOBuilder* builder, char* buffer, size_t bytes) noexcept {
  if (builder == nullptr) return 0;
  builder->statement.forget_problem();
  tavo::ByteText text;
  if (builder->statement.finish(text) != TAVO_BUILD_OK) return 0;
  if (buffer != nullptr && bytes != 0) {
    const size_t fitting = text.count() < bytes ? text.count() : bytes - 1;
    std::memcpy(buffer, text.begin(), fitting);
    buffer[fitting] = 0;
  }
  return text.count() + 1;
}

const char* TAVOBuilder_GetProblem(const TAVOBuilder* builder) noexcept {
  return builder == nullptr ? "" : builder->statement.problem();
}

uint32_t TAVOBuilder_GetProblemNumber(const TAVOBuilder* builder) noexcept {
  return builder == nullptr ? 0 : builder->statement.problem_number();
}

void TAVOBuilder_Free(TAVOBuilder* builder) noexcept {
  delete builder;
}

}  // extern "C"
