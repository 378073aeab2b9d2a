// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/disk/DiskPool.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <vector>

namespace marrowbeck::tools {
namespace {

TEST(DiskPool, WhatIsHeldHoldsNobodyUp) {
    DiskPool pool(2, 4);
    auto answer = std::make_shared<std::promise<void>>();
    const std::shared_future<void> disk = answer->get_future().share();
    auto behind = std::make_shared<std::promise<void>>();
    auto done = behind->get_future();
    std::vector<DiskPool::Task> tasks(3, [disk] { disk.wait(); });
    tasks.emplace_back([behind] { behind->set_value(); });
    pool.add(std::move(tasks));
    done.wait();
    answer->set_value();
}

}  // namespace
}  // namespace marrowbeck::tools
