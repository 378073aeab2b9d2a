// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QCollator>
#include <functional>
#include <optional>
#include <vector>

#include "framework/core/text/String.h"

namespace framework {

/// The order in which a person looks for texts: by the rules of the person's language, numbers by their value, so that
/// IMG_2 comes before IMG_10. For texts that are compared many times, each of which is looked at once.
class TextOrder {
  public:
    using TextOf = std::function<String(int number)>;

    /// Of texts with the numbers 0 to count - 1, which do not change meanwhile.
    explicit TextOrder(int count);

    /// Whether the text with the number `one` comes after that with the number `other`.
    bool IsBehind(int one, int other, const TextOf& textOf);

  private:
    const QCollatorSortKey& key(int number, const TextOf& textOf);

    QCollator collator_;
    std::vector<std::optional<QCollatorSortKey>> keys_;
};

}  // namespace framework
