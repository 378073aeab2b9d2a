// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Random.h"

#include <QRandomGenerator>
#include <algorithm>
#include <cstdint>

namespace framework {

int Random::InRange(int least, int most) {
    const auto [low, high] = std::minmax(least, most);
    const std::int64_t count = std::int64_t{high} - low + 1;
    return static_cast<int>(low + QRandomGenerator::system()->bounded(static_cast<qint64>(count)));
}

double Rnd() {
    return QRandomGenerator::system()->generateDouble();
}

}  // namespace framework
