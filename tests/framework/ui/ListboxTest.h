// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <string>
#include <vector>

#include "framework/ui/list/Listbox.h"

namespace framework::testing {

/// A list of several columns on show, and what a person does to it.
class ListboxTest : public ::testing::Test {
  protected:
    void SetUp() override {
        list->ColumnCount(3);
        list->HasHeading(true);
        list->SelectionType(1);
        list->Place(0, 0, 400, 200);
        list->OnChange = [this] { ++changes; };
        list->Native()->show();
    }

    /// Adds a row for each name, with its number in the second column.
    void Add(const std::vector<std::string>& names) {
        for (const std::string& name : names) list->AddRow(String(name), String(std::to_string(list->ListCount())));
    }
    void Add(int count) {
        for (int i = 0; i < count; ++i) list->AddRow(String("row " + std::to_string(i)));
    }
    void Settle() { QCoreApplication::processEvents(); }

    QTableView& View() { return *static_cast<QTableView*>(list->Native()); }
    QPoint PlaceOf(int row, int column = 0) {
        Settle();
        return View().visualRect(View().model()->index(row, column)).center();
    }
    void Click(int row, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(View().viewport(), button, modifiers, PlaceOf(row));
    }
    void ClickHeading(int column) {
        Settle();
        QTest::mouseClick(View().horizontalHeader()->viewport(), Qt::LeftButton, {}, HeadingPlace(column));
    }
    /// A second click directly after the first.
    void ClickHeadingAgain(int column) {
        const QPointF place = HeadingPlace(column);
        for (const QEvent::Type type : {QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, place, Qt::LeftButton, Qt::LeftButton, {});
            QApplication::sendEvent(View().horizontalHeader()->viewport(), &event);
        }
    }
    QPoint HeadingPlace(int column) {
        const QHeaderView& header = *View().horizontalHeader();
        return {header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2};
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&View(), key, modifiers); }

    /// The cells of a column from top to bottom, with blanks between.
    std::string Column(int column) {
        std::string texts;
        for (int row = 0; row < list->ListCount(); ++row) {
            texts += (row > 0 ? " " : "") + list->Cell(row, column).ToStd();
        }
        return texts;
    }
    /// The names of the selected rows.
    std::string Selection() {
        std::string texts;
        for (int row = 0; row < list->ListCount(); ++row) {
            if (list->Selected(row)) texts += (texts.empty() ? "" : " ") + list->Cell(row, 0).ToStd();
        }
        return texts;
    }

    const Ref<Listbox> list = New<Listbox>();
    int changes = 0;
};

}  // namespace framework::testing
