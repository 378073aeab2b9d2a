// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QString>
#include <vector>

namespace framework::native {

/// A text of any length for a field that only shows it. Of lines without end, or of lines without number, a part is
/// shown that a person may look through: the toolkit would take long to lay out the whole. What is taken from the field
/// comes from the whole text, of which every character that steers is shown as a sign (see Harmless).
class LongText {
  public:
    explicit LongText(const QString& whole = {});

    /// With a mark in each place where something is left out, and line ends as the toolkit counts them.
    const QString& Shown() const { return shown_; }
    /// The part of the whole text between two places in what is shown; a mark between them brings all it stands for.
    QString Between(qsizetype start, qsizetype end) const;

  private:
    /// From the place `shown` on, what is shown stands from the place `whole` on in the whole text.
    struct Run {
        qsizetype shown;
        qsizetype whole;
    };

    void show(qsizetype end);
    void showInstead(qsizetype end, QChar character);
    qsizetype placeInWhole(qsizetype shown) const;

    QString whole_;
    QString shown_;
    std::vector<Run> runs_;
    /// How far the whole text is dealt with.
    qsizetype done_ = 0;
};

}  // namespace framework::native
