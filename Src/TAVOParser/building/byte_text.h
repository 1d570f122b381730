// Growing text whose allocations may fail without an exception.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace tavo {

// An array of plain objects. A failed allocation leaves it unchanged.
template <typename Object>
class GrowingArray {
 public:
  GrowingArray() = default;
  GrowingArray(const GrowingArray&) = delete;
  GrowingArray& operator=(const GrowingArray&) = delete;
  ~GrowingArray() {
    std::free(objects_);
  }

  bool append(const Object* objects, size_t count) {
    if (count > room_ - count_) {
      size_t room = room_ == 0 ? 32 : room_ * 2;
      while (room < count_ + count) room *= 2;
      auto* grown = static_cast<Object*>(std::realloc(objects_, room * sizeof(Object)));
      if (grown == nullptr) return false;
      objects_ = grown;
      room_ = room;
    }
    if (count != 0) std::memcpy(objects_ + count_, objects, count * sizeof(Object));
    count_ += count;
    return true;
  }
  bool append(const Object& object) {
    return append(&object, 1);
  }
  void cut(size_t count) {
    count_ = count;
  }
  size_t count() const {
    return count_;
  }
  const Object* begin() const {
    return objects_;
  }
  const Object* end() const {
    return objects_ + count_;
  }
  const Object& operator[](size_t index) const {
    return objects_[index];
  }

 private:
  Object* objects_ = nullptr;
  size_t count_ = 0;
  size_t room_ = 0;
};

class ByteText : public GrowingArray<char> {
 public:
  bool put(std::string_view text) {
    return append(text.data(), text.size());
  }
  std::string_view view() const {
    return {begin(), count()};
  }
};

}  // namespace tavo
