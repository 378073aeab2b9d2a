// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

#include "framework/core/objects/Color.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

class QPainter;

namespace framework {

class Picture;

/// What is drawn with: handed to the handlers of paint events, for the time of the event only, or asked of a picture.
/// Where a control is not being painted there is nothing to draw on; whatever is drawn then has the control painted
/// anew instead, soon. Places and sizes are in pixels from the top left corner of the area.
class Graphics {
  public:
    /// On a painter whose origin is the area's corner; for the framework alone, as the next two.
    Graphics(QPainter& painter, int width, int height);
    explicit Graphics(Ref<Picture> picture);
    /// Of a control that is not being painted; `refresh` has it painted anew.
    Graphics(std::function<void()> refresh, int width, int height);
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;
    ~Graphics();

    /// The colour of fillings and texts, black at first.
    Color ForeColor() const { return foreColor_; }
    void ForeColor(Color color) { foreColor_ = color; }

    int Width() const { return width_; }
    int Height() const { return height_; }

    void FillRect(int x, int y, int width, int height);
    /// Makes the area blank: the background of a control, white in a picture.
    void ClearRect(int x, int y, int width, int height);

    /// Draws `picture` at its natural size.
    void DrawPicture(const Ref<Picture>& picture, int x, int y);
    /// Draws the part of `picture` at the source place and size, scaled to the destination's size.
    void DrawPicture(const Ref<Picture>& picture, int x, int y, int destinationWidth, int destinationHeight,
                     int sourceX, int sourceY, int sourceWidth, int sourceHeight);

    /// The colour that the whole area was last filled with, into `color`; False when it never was. Whoever draws a
    /// text on top can choose a colour that can be read there.
    bool CoveredWith(Color& color) const;

  private:
    template <class Operation>
    void draw(Operation operation);

    QPainter* painter_ = nullptr;
    Ref<Picture> picture_;
    std::function<void()> refresh_;
    int width_ = 0;
    int height_ = 0;
    Color foreColor_;
    Color cover_;
    bool covered_ = false;
};

}  // namespace framework
