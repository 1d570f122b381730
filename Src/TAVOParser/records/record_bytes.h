// Access to the internal records by byte position, and chains linked through their first member.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "TAVOServiceRecords.h"

namespace tavo {

// The value at a byte of a record, of any alignment.
template <typename Value>
Value read_at(const void* record, size_t offset) {
  Value value;
  std::memcpy(&value, static_cast<const std::byte*>(record) + offset, sizeof value);
  return value;
}

// Copies a member from a byte of a record.
template <typename Member>
void copy_from(Member& member, const void* record, size_t offset) {
  std::memcpy(&member, static_cast<const std::byte*>(record) + offset, sizeof member);
}

inline const void* next_of(const void* node) {
  return read_at<const void*>(node, 0);
}

template <typename Record>
void write_header(Record& record, const char (&eye)[5]) {
  std::memcpy(record.eye, eye, sizeof record.eye);
  record.version = TAVO_EXTERNAL_RECORD_VERSION;
  record.size = static_cast<uint16_t>(sizeof record);
}

inline void free_chain(void* head) {
  while (head != nullptr) {
    void* const next = read_at<void*>(head, 0);
    std::free(head);
    head = next;
  }
}

// Appends a zeroed node to a chain. Returns it, or null when memory cannot be allocated.
template <typename Node>
Node* append_node(Node**& tail) {
  auto* const node = static_cast<Node*>(std::calloc(1, sizeof(Node)));
  if (node == nullptr) return nullptr;
  *tail = node;
  tail = &node->next;
  return node;
}

// Builds an external chain from an internal one, in the same order. fill(source, node) returns 0 or
// the failure that stops the build; no_memory is the failure when a node cannot be allocated.
// The nodes built so far stay in the chain.
template <typename Node, typename Fill>
uint32_t build_chain(const void* source, Node*& head, uint32_t no_memory, const Fill& fill) {
  Node** tail = &head;
  for (; source != nullptr; source = next_of(source)) {
    Node* const node = append_node(tail);
    if (node == nullptr) return no_memory;
    if (const uint32_t status = fill(source, *node); status != 0) return status;
  }
  return 0;
}

}  // namespace tavo
