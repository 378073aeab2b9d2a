// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/SegmentedControl.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>
#include <algorithm>

#include "framework/core/objects/Exceptions.h"
#include "framework/ui/control/AccessibleRole.h"
#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

constexpr int kTitleMargin = 7;
constexpr qreal kRadius = 5;

bool isForwards(int key) {
    return key == Qt::Key_Right || key == Qt::Key_Down;
}

bool isBackwards(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Up;
}

}  // namespace

/// One segment on the screen; to a screen reader, a radio button where one of them is chosen at a time.
class SegmentedControl::Segment : public QRadioButton {
  public:
    explicit Segment(QWidget* parent) : QRadioButton(parent) { setAttribute(Qt::WA_Hover); }

    bool First = false;
    bool Last = false;

    int WidthOfTitle() const { return fontMetrics().horizontalAdvance(text()) + 2 * native::ToToolkit(kTitleMargin); }

  protected:
    // What is selected is for the control to say.
    void nextCheckState() override {}
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }

    void keyPressEvent(QKeyEvent* event) override {
        if (isForwards(event->key()) || isBackwards(event->key())) {
            event->ignore();  // the row's
        } else {
            QRadioButton::keyPressEvent(event);
        }
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
        const auto color = [&](QPalette::ColorRole role) { return palette().color(group, role); };

        QColor face = color(isChecked() ? QPalette::Highlight : QPalette::Button);
        if (isDown()) {
            face = face.darker(115);
        } else if (underMouse() && isEnabled()) {
            face = face.lighter(110);
        }
        QLinearGradient shine(0, 0, 0, height());
        shine.setColorAt(0, face.lighter(isChecked() ? 100 : 112));
        shine.setColorAt(1, face.darker(isChecked() ? 106 : 104));
        painter.setPen(QPen(color(QPalette::Dark), 1));
        painter.setBrush(shine);
        painter.drawPath(outline());
        if (hasFocus()) {
            painter.setPen(QPen(color(QPalette::HighlightedText), 1, Qt::DotLine));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(rect().adjusted(4, 4, -5, -5));
        }
        painter.setPen(color(isChecked() ? QPalette::HighlightedText : QPalette::ButtonText));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }

  private:
    /// Round where the row ends; the right edge is drawn by the next segment.
    QPainterPath outline() const {
        QRectF box = QRectF(rect()).adjusted(0.5, 0.5, Last ? -0.5 : 0.5, -0.5);
        QPainterPath round;
        round.setFillRule(Qt::WindingFill);
        round.addRoundedRect(box, kRadius, kRadius);
        if (!First) round.addRect(box.adjusted(0, 0, -box.width() / 2, 0));
        if (!Last) round.addRect(box.adjusted(box.width() / 2, 0, 0, 0));
        return round.simplified();
    }
};

/// The row on the screen; to a screen reader, a group of buttons.
class SegmentedControl::Row : public QWidget, public native::AccessibleRole {
  public:
    explicit Row(SegmentedControl& owner) : owner_(owner) {}

    void Add() {
        const int index = static_cast<int>(Segments.size());
        auto* const segment = new Segment(this);
        segment->setObjectName(QStringLiteral("Segment%1").arg(index));
        QObject::connect(segment, &QRadioButton::clicked, this, [this, index] { owner_.press(index); });
        Segments.push_back(segment);
        segment->show();
        moveStop(Segments.front());
    }

    /// The width that segment `index` asks for.
    int WantedWidth(std::size_t index) const {
        return std::max(native::ToToolkit(owner_.items_[index]->Width()), Segments[index]->WidthOfTitle());
    }

    /// Brings the segments in step with the items, and shares out the width.
    void Update() {
        int total = 0;
        for (std::size_t i = 0; i < Segments.size(); ++i) {
            const SegmentedControlItem& item = *owner_.items_[i];
            // The toolkit would keep one checked.
            Segments[i]->setAutoExclusive(false);
            Segments[i]->setText(native::ToQt(item.Title()));
            Segments[i]->setAccessibleName(native::ToQt(item.Title()));
            Segments[i]->setChecked(item.Selected());
            Segments[i]->First = i == 0;
            Segments[i]->Last = i + 1 == Segments.size();
            total += WantedWidth(i);
        }
        for (Segment* segment : Segments) segment->setAutoExclusive(owner_.SelectionType() == SelectionSingle);
        enterAtChosen();
        int wanted = 0;
        for (std::size_t i = 0; i < Segments.size(); ++i) {
            const int left = width() * wanted / total;
            wanted += WantedWidth(i);
            Segments[i]->setGeometry(left, 0, width() * wanted / total - left, height());
            Segments[i]->update();
        }
    }

    QAccessible::Role Role() const override { return QAccessible::Grouping; }

    std::vector<Segment*> Segments;

  protected:
    void resizeEvent(QResizeEvent*) override { Update(); }

    void keyPressEvent(QKeyEvent* event) override {
        const bool forwards = isForwards(event->key());
        const auto focused =
            std::find_if(Segments.begin(), Segments.end(), [](const Segment* segment) { return segment->hasFocus(); });
        if ((!forwards && !isBackwards(event->key())) || focused == Segments.end()) {
            event->ignore();
            return;
        }
        // The arrows go to a segment and do not press it: a press may start something long.
        const auto count = static_cast<std::ptrdiff_t>(Segments.size());
        const auto next = (focused - Segments.begin() + (forwards ? 1 : count - 1)) % count;
        Segment* const segment = Segments[static_cast<std::size_t>(next)];
        moveStop(segment);
        segment->setFocus(Qt::TabFocusReason);
    }

  private:
    /// The Tab key finds the segment that is chosen, unless the focus stands somewhere in the row.
    void enterAtChosen() {
        const auto chosen =
            std::find_if(Segments.begin(), Segments.end(), [](const Segment* segment) { return segment->isChecked(); });
        const bool inside =
            std::any_of(Segments.begin(), Segments.end(), [](const Segment* segment) { return segment->hasFocus(); });
        if (chosen != Segments.end() && !inside) moveStop(*chosen);
    }

    /// Makes one segment the place at which the Tab key stops.
    void moveStop(Segment* stop) {
        for (Segment* segment : Segments) segment->setFocusPolicy(segment == stop ? Qt::StrongFocus : Qt::ClickFocus);
        setFocusProxy(stop);
    }

    SegmentedControl& owner_;
};

SegmentedControl::SegmentedControl() : RectControl(new Row(*this)) {}

SegmentedControl::~SegmentedControl() {
    for (const Ref<SegmentedControlItem>& item : items_) item->owner_ = nullptr;
}

SegmentedControl::Row& SegmentedControl::row() const {
    return *static_cast<Row*>(Native());
}

void SegmentedControl::Append(const Ref<SegmentedControlItem>& item) {
    items_.push_back(item);
    item->owner_ = this;
    row().Add();
    selectionChanged(*item);
}

Ref<SegmentedControlItem> SegmentedControl::Items(int index) const {
    if (index < 0 || index >= Count()) throw OutOfBoundsException();
    return items_[static_cast<std::size_t>(index)];
}

void SegmentedControl::SelectionType(int type) {
    selectionType_ = type;
    update();
}

void SegmentedControl::SizeToFit() {
    update();
    int width = 0;
    for (std::size_t i = 0; i < items_.size(); ++i) width += row().WantedWidth(i);
    Width(native::FromToolkit(width));
    update();
}

void SegmentedControl::press(int index) {
    const Ref<SegmentedControl> alive(this);
    SegmentedControlItem& item = *Items(index);
    if (selectionType_ != SelectionNone) item.Selected(selectionType_ == SelectionSingle || !item.Selected());
    OnAction.Raise(*this, index);
}

void SegmentedControl::selectionChanged(SegmentedControlItem& item) {
    if (item.Selected() && selectionType_ == SelectionSingle) {
        for (const Ref<SegmentedControlItem>& other : items_) {
            if (other.Get() != &item) other->selected_ = false;
        }
    }
    update();
}

void SegmentedControl::update() {
    row().Update();
}

}  // namespace framework
