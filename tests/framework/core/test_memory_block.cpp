// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/MemoryBlock.h"

#include <gtest/gtest.h>

#include <limits>

#include "framework/core/objects/Exceptions.h"
#include "framework/core/objects/Ref.h"

using namespace framework;

TEST(MemoryBlock, readsAndWritesNumbersAtAnyOffset) {
    const Ref<MemoryBlock> block = New<MemoryBlock>(8);
    block->Long(1, -2);
    EXPECT_EQ(block->Long(1), -2);
    EXPECT_EQ(block->Byte(0), 0);
    EXPECT_EQ(block->Byte(5), 0);
    EXPECT_EQ(block->UShort(3), 0xFFFF);
    EXPECT_EQ(block->Short(3), -1);
    block->UShort(0, 0x0102);
    EXPECT_EQ(static_cast<unsigned char*>(block->Data())[0], 2);
    block->Byte(7, 200);
    EXPECT_EQ(block->Byte(7), 200);
}

TEST(MemoryBlock, refusesWhatReachesOutside) {
    const Ref<MemoryBlock> block = New<MemoryBlock>(4);
    block->Long(0, 1);
    EXPECT_THROW(block->Long(1), OutOfBoundsException);
    EXPECT_THROW(block->Byte(4), OutOfBoundsException);
    EXPECT_THROW(block->Byte(-1, 0), OutOfBoundsException);
    EXPECT_THROW(block->Short(std::numeric_limits<int>::max()), OutOfBoundsException);
    EXPECT_THROW(block->CString(1, "abc"), OutOfBoundsException);
    EXPECT_THROW(block->StringValue(3, 2), OutOfBoundsException);
    EXPECT_THROW(block->StringValue(0, -1), OutOfBoundsException);
    EXPECT_THROW(block->StringValue(0, 5, ""), OutOfBoundsException);
    EXPECT_EQ(block->Long(0), 1);
    EXPECT_THROW(New<MemoryBlock>(-1)->Byte(0), OutOfBoundsException);
}
