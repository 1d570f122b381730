#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "TAVOServiceRecords.h"
#include "records/internal_records.h"
#include "support/util_platform_double.h"

namespace {

using internal_records::ControlBlock;
using internal_records::Record;
using internal_records::ServiceDefinition;

constexpr uint32_t kNull = 0xFFFFFFFFu;
constexpr uint8_t kUnwritten = 0xCD;

class Records : public testing::Test {
 protected:
  void SetUp() override {
    util_platform::reset();
  }
};

using Bytes = std::vector<uint8_t>;

template <typename Value>
Bytes bytes_of(const Value& value) {
  const auto* first = reinterpret_cast<const uint8_t*>(&value);
  return Bytes(first, first + sizeof value);
}

// The expected bytes of an external record: unwritten ones, then pieces.
class Expected {
 public:
  Expected(size_t size, uint8_t fill) : bytes_(size, fill) {}
  Expected& text(size_t at, const char* eye) {
    std::memcpy(&bytes_.at(at), eye, 4);
    return *this;
  }
  Expected& copy(size_t at, const Record& from, size_t offset, size_t count) {
    std::memcpy(&bytes_.at(at), from.data() + offset, count);
    return *this;
  }
  template <typename Value>
  Expected& set(size_t at, Value value) {
    std::memcpy(&bytes_.at(at), &value, sizeof value);
    return *this;
  }
  const Bytes& bytes() const {
    return bytes_;
  }

 private:
  Bytes bytes_;
};

Bytes expected_field(const Record& source, const FieldDefX* next, uint8_t fill) {
  return Expected(64, fill)
      .set(0, next)
      .text(8, "FLDX")
      .set<uint16_t>(12, 21)
      .set<uint16_t>(14, 64)
      .copy(16, source, 16, 24)
      .copy(40, source, 48, 8)
      .copy(48, source, 56, 8)
      .copy(56, source, 64, 8)
      .bytes();
}

Bytes expected_operator(const Record& source, const OprDefX* next, uint8_t fill) {
  return Expected(104, fill)
      .set(0, next)
      .text(8, "OPRX")
      .set<uint16_t>(12, 21)
      .set<uint16_t>(14, 104)
      .copy(16, source, 16, 60)
      .copy(80, source, 80, 24)
      .bytes();
}

Bytes expected_block(const Record& source, const CtrlBlkX& block) {
  return Expected(80, kUnwritten)
      .text(0, "BLKX")
      .set<uint16_t>(4, 21)
      .set<uint16_t>(6, 80)
      .copy(8, source, 8, 1)
      .copy(10, source, 12, 10)
      .copy(20, source, 22, 2)
      .copy(24, source, 24, 8)
      .set(32, block.fields)
      .copy(48, source, 56, 8)
      .set(56, block.groups)
      .bytes();
}

Bytes expected_service(const ServiceDefinition& source, const SvcDefX& service) {
  return Expected(40, kUnwritten)
      .text(0, "SVCX")
      .set<uint16_t>(4, 21)
      .set<uint16_t>(6, 40)
      .copy(8, source.service, 8, 16)
      .set(24, service.operators)
      .copy(32, source.third, 32, 8)
      .bytes();
}

template <typename Value>
Value unwritten() {
  Value value;
  std::memset(&value, kUnwritten, sizeof value);
  return value;
}

void free_block(CtrlBlkX& block) {
  EXPECT_EQ(0u, CleanParamsX(block.groups));
  EXPECT_EQ(0u, CleanParamsX(block.fields));
}

TEST_F(Records, AFieldDefinitionIsByteForByte) {
  const Record source(internal_records::kFieldSize, 9);
  auto field = unwritten<FieldDefX>();
  EXPECT_EQ(0u, TAVOCnvFieldDefFromIToX(source.data(), &field));
  EXPECT_EQ(expected_field(source, nullptr, kUnwritten), bytes_of(field));
}

TEST_F(Records, AnOperatorDefinitionIsByteForByte) {
  const Record source(internal_records::kOperatorSize, 9);
  auto opr = unwritten<OprDefX>();
  EXPECT_EQ(0u, TAVOCnvOprDefFromIToX(source.data(), &opr));
  EXPECT_EQ(expected_operator(source, nullptr, kUnwritten), bytes_of(opr));
}

TEST_F(Records, AControlBlockWithoutChainsIsAHeader) {
  const ControlBlock source = ControlBlock().link();
  auto block = unwritten<CtrlBlkX>();
  EXPECT_EQ(0u, TAVOCnvCtrlBlkFromIToX(source.block.data(), &block));
  EXPECT_EQ(nullptr, block.fields);
  EXPECT_EQ(nullptr, block.groups);
  EXPECT_EQ(expected_block(source.block, block), bytes_of(block));
}

TEST_F(Records, AControlBlockKeepsTheOrderOfItsFields) {
  ControlBlock source;
  source.with_fields(3);
  auto block = unwritten<CtrlBlkX>();
  ASSERT_EQ(0u, TAVOCnvCtrlBlkFromIToX(source.block.data(), &block));
  EXPECT_EQ(expected_block(source.block, block), bytes_of(block));
  const FieldDefX* field = block.fields;
  for (size_t i = 0; i < 3; ++i, field = field->next) {
    ASSERT_NE(nullptr, field);
    EXPECT_EQ(expected_field(source.fields[i], field->next, 0), bytes_of(*field)) << i;
  }
  EXPECT_EQ(nullptr, field);
  free_block(block);
}

TEST_F(Records, AGroupPointsAsManyFieldsDownAsItsCount) {
  ControlBlock source;
  source.with_fields(3).with_group(2).with_group(0).with_group(1);
  auto block = unwritten<CtrlBlkX>();
  ASSERT_EQ(0u, TAVOCnvCtrlBlkFromIToX(source.block.data(), &block));
  const GroupNodeX* group = block.groups;
  FieldDefX* const fields[3] = {block.fields, block.fields->next, block.fields->next->next};
  for (const int16_t count : std::initializer_list<int16_t>{2, 0, 1}) {
    ASSERT_NE(nullptr, group);
    EXPECT_EQ(
        Expected(24, 0).set(0, group->next).set<int16_t>(8, count).set(16, fields[count]).bytes(),
        bytes_of(*group));
    group = group->next;
  }
  EXPECT_EQ(nullptr, group);
  free_block(block);
}

TEST_F(Records, AGroupStopsAtTheLastField) {
  ControlBlock source;
  source.with_fields(2).with_group(2).with_group(32767).with_group(-1);
  auto block = unwritten<CtrlBlkX>();
  ASSERT_EQ(0u, TAVOCnvCtrlBlkFromIToX(source.block.data(), &block));
  const GroupNodeX* group = block.groups;
  EXPECT_EQ(block.fields->next, group->field);
  EXPECT_EQ(block.fields->next, group->next->field);
  EXPECT_EQ(32767, group->next->count);
  EXPECT_EQ(block.fields, group->next->next->field);
  EXPECT_EQ(-1, group->next->next->count);
  free_block(block);
}

TEST_F(Records, AGroupWithoutFieldsPointsAtNothing) {
  ControlBlock source;
  source.with_group(1);
  auto block = unwritten<CtrlBlkX>();
  ASSERT_EQ(0u, TAVOCnvCtrlBlkFromIToX(source.block.data(), &block));
  ASSERT_NE(nullptr, block.groups);
  EXPECT_EQ(nullptr, block.groups->field);
  free_block(block);
}

TEST_F(Records, AServiceDefinitionIsByteForByteWithItsOperatorsInOrder) {
  const ServiceDefinition source(3);
  auto* service = static_cast<SvcDefX*>(std::malloc(sizeof(SvcDefX)));
  std::memset(service, kUnwritten, sizeof *service);
  ASSERT_EQ(0u, TAVOCnvSvcDefFromIToX(source.third.data(), source.service.data(), service));
  EXPECT_EQ(expected_service(source, *service), bytes_of(*service));
  const OprDefX* opr = service->operators;
  for (size_t i = 0; i < 3; ++i, opr = opr->next) {
    ASSERT_NE(nullptr, opr);
    EXPECT_EQ(expected_operator(source.operators[i], opr->next, 0), bytes_of(*opr)) << i;
  }
  EXPECT_EQ(nullptr, opr);
  EXPECT_EQ(0u, CleanSvcDefX(service));
}

TEST_F(Records, AServiceDefinitionWithoutOperatorsHasAnEmptyChain) {
  const ServiceDefinition source(0);
  auto service = unwritten<SvcDefX>();
  EXPECT_EQ(0u, TAVOCnvSvcDefFromIToX(source.third.data(), source.service.data(), &service));
  EXPECT_EQ(nullptr, service.operators);
}

TEST_F(Records, HeadersAndCopiedFieldsStayWrittenAfterAFailureAndThatIsMeant) {
  ControlBlock source;
  source.with_fields(2).with_group(1);
  util_platform::platform().fail_frame_at = 3;  // the second field's conversion
  util_platform::platform().frame_status = 4711;
  auto block = unwritten<CtrlBlkX>();
  EXPECT_EQ(4711u, TAVOCnvCtrlBlkFromIToX(source.block.data(), &block));
  EXPECT_EQ(nullptr, block.fields);
  EXPECT_EQ(nullptr, block.groups);
  EXPECT_EQ(expected_block(source.block, block), bytes_of(block));

  util_platform::reset();
  util_platform::platform().fail_frame_at = 2;  // the first operator's conversion
  util_platform::platform().frame_status = 4712;
  const ServiceDefinition definition(2);
  auto service = unwritten<SvcDefX>();
  EXPECT_EQ(4712u,
            TAVOCnvSvcDefFromIToX(definition.third.data(), definition.service.data(), &service));
  EXPECT_EQ(nullptr, service.operators);
  EXPECT_EQ(expected_service(definition, service), bytes_of(service));
}

TEST_F(Records, NullArgumentsAreRefusedAndNothingIsWritten) {
  const Record source(internal_records::kControlBlockSize, 1);
  auto block = unwritten<CtrlBlkX>();
  auto service = unwritten<SvcDefX>();
  auto field = unwritten<FieldDefX>();
  auto opr = unwritten<OprDefX>();
  EXPECT_EQ(kNull, TAVOCnvCtrlBlkFromIToX(nullptr, &block));
  EXPECT_EQ(kNull, TAVOCnvCtrlBlkFromIToX(source.data(), nullptr));
  EXPECT_EQ(kNull, TAVOCnvFieldDefFromIToX(nullptr, &field));
  EXPECT_EQ(kNull, TAVOCnvFieldDefFromIToX(source.data(), nullptr));
  EXPECT_EQ(kNull, TAVOCnvOprDefFromIToX(nullptr, &opr));
  EXPECT_EQ(kNull, TAVOCnvOprDefFromIToX(source.data(), nullptr));
  EXPECT_EQ(kNull, TAVOCnvSvcDefFromIToX(nullptr, source.data(), &service));
  EXPECT_EQ(kNull, TAVOCnvSvcDefFromIToX(source.data(), nullptr, &service));
  EXPECT_EQ(kNull, TAVOCnvSvcDefFromIToX(source.data(), source.data(), nullptr));
  EXPECT_EQ(bytes_of(unwritten<CtrlBlkX>()), bytes_of(block));
  EXPECT_EQ(bytes_of(unwritten<SvcDefX>()), bytes_of(service));
  EXPECT_EQ(bytes_of(unwritten<FieldDefX>()), bytes_of(field));
  EXPECT_EQ(bytes_of(unwritten<OprDefX>()), bytes_of(opr));
}

TEST_F(Records, CleaningNothingIsFine) {
  EXPECT_EQ(0u, CleanSvcDefX(nullptr));
  EXPECT_EQ(0u, CleanParamsX(nullptr));
}

}  // namespace
