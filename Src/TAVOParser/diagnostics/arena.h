// Memory for one diagnosis: allocated in chunks, freed all at once. A statement of ordinary size
// fits into the space inside the objects.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

namespace tavo::diagnostics {

class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;
  ~Arena() {
    while (chunks_ != nullptr) {
      Chunk* previous = chunks_->previous;
      std::free(chunks_);
      chunks_ = previous;
    }
  }

  // A value-initialized array; null if the allocation fails, which refused() then reports.
  template <typename Element>
  Element* make(size_t count = 1) {
    static_assert(std::is_trivially_destructible_v<Element>);
    void* memory = take(count * sizeof(Element));
    if (memory == nullptr) return nullptr;
    return new (memory) Element[count]();
  }
  bool refused() const {
    return refused_;
  }

 private:
  struct Chunk {
    Chunk* previous;
  };
  static constexpr size_t kAlignment = alignof(std::max_align_t);
  static constexpr size_t kChunk = 32768;

  void* take(size_t bytes) {
    bytes = (bytes + kAlignment - 1) / kAlignment * kAlignment;
    if (bytes > static_cast<size_t>(limit_ - next_) && !take_chunk(bytes)) return nullptr;
    void* memory = next_;
    next_ += bytes;
    return memory;
  }
  bool take_chunk(size_t bytes) {
    constexpr size_t kHead = (sizeof(Chunk) + kAlignment - 1) / kAlignment * kAlignment;
    const size_t size = bytes > kChunk ? bytes : kChunk;
    auto* chunk = static_cast<char*>(std::malloc(kHead + size));
    if (chunk == nullptr) {
      refused_ = true;
      return false;
    }
    chunks_ = new (chunk) Chunk{chunks_};
    next_ = chunk + kHead;
    limit_ = next_ + size;
    return true;
  }

  alignas(kAlignment) char first_[4096];
  char* next_ = first_;
  char* limit_ = first_ + sizeof first_;
  Chunk* chunks_ = nullptr;
  bool refused_ = false;
};

// A list that grows; the object itself holds the first elements.
template <typename Element, size_t kInside>
class GrowingList {
 public:
  static_assert(std::is_trivially_copyable_v<Element>);

  GrowingList() = default;
  GrowingList(const GrowingList&) = delete;
  GrowingList& operator=(const GrowingList&) = delete;
  ~GrowingList() {
    if (elements_ != inside_) std::free(elements_);
  }

  // Returns false if the allocation fails; the list is then unchanged.
  bool add(const Element& element) {
    if (count_ == room_ && !grow()) return false;
    elements_[count_++] = element;
    return true;
  }
  void remove_last() {
    --count_;
  }
  void clear() {
    count_ = 0;
  }
  size_t size() const {
    return count_;
  }
  Element& operator[](size_t index) {
    return elements_[index];
  }
  const Element& operator[](size_t index) const {
    return elements_[index];
  }
  Element* begin() {
    return elements_;
  }
  Element* end() {
    return elements_ + count_;
  }
  const Element* begin() const {
    return elements_;
  }
  const Element* end() const {
    return elements_ + count_;
  }
  bool refused() const {
    return refused_;
  }

 private:
  bool grow() {
    auto* larger = static_cast<Element*>(std::malloc(2 * room_ * sizeof(Element)));
    if (larger == nullptr) {
      refused_ = true;
      return false;
    }
    std::memcpy(static_cast<void*>(larger), elements_, count_ * sizeof(Element));
    if (elements_ != inside_) std::free(elements_);
    elements_ = larger;
    room_ *= 2;
    return true;
  }

  Element inside_[kInside];
  Element* elements_ = inside_;
  size_t count_ = 0;
  size_t room_ = kInside;
  bool refused_ = false;
};

}  // namespace tavo::diagnostics
