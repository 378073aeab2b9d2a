// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <chrono>
#include <numeric>
#include <random>

#include "framework/core/threads/Thread.h"
#include "framework/ui/list/ListboxSort.h"
#include "tests/framework/ui/ListboxTest.h"

namespace framework::testing {
namespace {

std::vector<int> sorted(int count, const ListboxSort::IsBehind& isBehind) {
    ListboxSort sort(count, isBehind);
    while (sort.Step()) {
    }
    return sort.Order();
}

TEST(ListboxSort, IsAStableSort) {
    std::mt19937 random(1);
    for (int count = 0; count < 200; ++count) {
        std::vector<int> keys(static_cast<std::size_t>(count));
        for (int& key : keys) key = static_cast<int>(random() % 20);
        const auto key = [&keys](int element) { return keys[static_cast<std::size_t>(element)]; };
        std::vector<int> expected(keys.size());
        std::iota(expected.begin(), expected.end(), 0);
        std::stable_sort(expected.begin(), expected.end(), [&key](int a, int b) { return key(a) < key(b); });
        EXPECT_EQ(sorted(count, [&key](int one, int other) { return key(one) > key(other); }), expected);
    }
}

class ListboxSortTest : public ListboxTest {
  protected:
    /// Compares the second column by number and never says that two are equal.
    void CompareNumbers() {
        list->OnCompareRows = [this](int row1, int row2, int column, int& result) {
            if (column != 1) return false;
            result = Number(row2) < Number(row1) ? 1 : -1;
            return true;
        };
    }
    int Number(int row) { return std::stoi(list->Cell(row, 1).ToStd()); }

    void AddNumbers(const std::vector<int>& numbers) {
        for (const int number : numbers) {
            list->AddRow(String(std::string(1, static_cast<char>('a' + list->ListCount()))),
                         String(std::to_string(number)));
        }
    }

    /// Many rows, and a handler so slow that sorting them takes a while.
    void BeSlow(int rows) {
        std::mt19937 random(3);
        for (int i = 0; i < rows; ++i) list->AddRow("x", String(std::to_string(random() % 1000)));
        list->OnCompareRows = [this](int row1, int row2, int, int& result) {
            const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(10);
            while (std::chrono::steady_clock::now() < end) {
            }
            result = Number(row2) < Number(row1) ? 1 : -1;
            return true;
        };
    }
    bool IsSorted(int rows) {
        for (int row = 1; row < rows; ++row) {
            if (Number(row) < Number(row - 1)) return false;
        }
        return true;
    }
};

TEST_F(ListboxSortTest, TheProgramsSortGoesByTheHeadingState) {
    AddNumbers({10, 9, 100, 9});
    CompareNumbers();
    list->Sort();
    EXPECT_EQ(Column(0), "a b c d") << "no column is chosen";
    list->HeadingIndex(1);
    list->Sort();
    EXPECT_EQ(Column(0), "b d a c");
    EXPECT_EQ(list->ColumnSortDirection(1), 1);
    list->ColumnSortDirection(1, -1);
    list->Sort();
    EXPECT_EQ(Column(0), "c a b d") << "equal rows keep their order in this direction too";
}

TEST_F(ListboxSortTest, TextsComeInTheOrderInWhichAPersonLooksForThem) {
    Add({"zug", "B", "IMG_10", "b", "Öl", "IMG_2", "A"});
    list->HeadingIndex(0);
    list->Sort();
    EXPECT_EQ(Column(0), "A b B IMG_2 IMG_10 Öl zug");
}

TEST_F(ListboxSortTest, AHeadingsClickSortsAndTheNextOneReverses) {
    AddNumbers({2, 3, 1});
    CompareNumbers();
    int clicked = -1;
    list->OnSortColumn = [&clicked](int column) {
        clicked = column;
        return false;
    };
    ClickHeading(1);
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(Column(1), "1 2 3");
    EXPECT_EQ(list->HeadingIndex(), 1);
    ClickHeadingAgain(1);
    EXPECT_EQ(Column(1), "3 2 1");
    EXPECT_EQ(list->ColumnSortDirection(1), -1);
    ClickHeading(0);
    EXPECT_EQ(Column(0), "a b c");
    EXPECT_EQ(View().horizontalHeader()->sortIndicatorSection(), 0);

    list->OnSortColumn = [](int) { return true; };
    ClickHeading(1);
    EXPECT_EQ(Column(0), "a b c");
}

TEST_F(ListboxSortTest, TheSelectionFollowsItsRows) {
    AddNumbers({2, 3, 1, 4});
    CompareNumbers();
    list->ListIndex(1);
    list->Selected(2, true);
    changes = 0;
    ClickHeading(1);
    EXPECT_EQ(Column(0), "c a b d");
    EXPECT_EQ(Selection(), "c b");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(list->Cell(View().currentIndex().row(), 0), "b");

    list->ListIndex(3);
    changes = 0;
    list->ColumnSortDirection(1, 1);
    list->Cell(0, 1, "2");
    list->Cell(1, 1, "1");
    list->Sort();
    EXPECT_EQ(Column(0), "a c b d");
    EXPECT_EQ(Selection(), "d");
    EXPECT_EQ(changes, 0) << "the selected row stayed where it was";
}

TEST_F(ListboxSortTest, TheWindowLivesWhileALongSortGoesOn) {
    BeSlow(2000);
    ClickHeading(1);
    EXPECT_FALSE(IsSorted(2000));
    list->AddRow("new", "0");
    EXPECT_TRUE(QTest::qWaitFor([this] { return IsSorted(2000); }, 60'000));
    EXPECT_EQ(list->Cell(2000, 0), "new");
    EXPECT_EQ(list->LastIndex(), 2000);
}

TEST_F(ListboxSortTest, AThreadsSortIsDroppedWhenItsRowsGo) {
    BeSlow(2000);
    list->HeadingIndex(1);
    const auto thread = New<Thread>();
    thread->OnRun = [this] { list->Sort(); };
    thread->Run();
    QTest::qWait(10);
    ASSERT_NE(thread->State(), Thread::NotRunning) << "the sort lets the event loop run";
    list->RemoveRow(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return thread->State() == Thread::NotRunning; }, 60'000));
    EXPECT_EQ(list->ListCount(), 1999);
    EXPECT_FALSE(IsSorted(1999));

    thread->Run();
    EXPECT_TRUE(QTest::qWaitFor([&] { return thread->State() == Thread::NotRunning; }, 60'000));
    EXPECT_TRUE(IsSorted(1999));
}

}  // namespace
}  // namespace framework::testing
