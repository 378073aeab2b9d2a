// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Window1.h"
#include "catalogue/RowRecord.h"

namespace marrowbeck {

void Window1::ShowColumns() {
    Listbox1->ColumnCount(RowRecord::kColumnCount);
    Listbox1->HasHeading(true);
    Listbox1->FileTagColumn(RowRecord::kFileReferenceTag);
    for (int column = 0; column < RowRecord::kColumnCount; ++column) {
        const auto index = static_cast<std::size_t>(column);
        Listbox1->Heading(column, RowRecord::kHeadings[index]);
    }
}

}  // namespace marrowbeck
